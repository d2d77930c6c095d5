#pragma once

// The edge between the host's code, which throws, and interfaces, which return results.

#include <exception>
#include <new>

#include "embedded/automation/geometry/Effort.h"
#include "embedded/automation/model/Refusal.h"
#include "host/com/IDispatch.h"

namespace velt::automation {

// Exception information for the caller, who frees its strings. `exception` may be null.
inline void fillException(EXCEPINFO* exception, const wchar_t* source, HRESULT result, const wchar_t* text) {
  if (exception == nullptr) return;
  *exception = {};
  exception->bstrSource = SysAllocString(source);
  exception->bstrDescription = SysAllocString(text);
  exception->scode = result;
}

// What an exception that is being handled means as a result. Call within a handler.
inline HRESULT resultOfException() {
  try {
    throw;
  } catch (const Refusal& refusal) {
    return refusal.result();
  } catch (const NotComputed&) {
    return E_FAIL;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception&) {
    return E_UNEXPECTED;
  }
}

// `body` gives an HRESULT; an exception becomes the result that it stands for.
template <class Body>
[[gnu::always_inline]] inline HRESULT guarded(Body&& body) {
  try {
    return body();
  } catch (...) {
    return resultOfException();
  }
}

// The same where exception information can be given: then the result is DISP_E_EXCEPTION, but for exhausted memory,
// which has no room for a text.
template <class Body>
HRESULT guardedInvoke(EXCEPINFO* exception, const wchar_t* source, Body&& body) {
  try {
    return body();
  } catch (const Refusal& refusal) {
    if (refusal.result() == E_OUTOFMEMORY) return E_OUTOFMEMORY;
    fillException(exception, source, refusal.result(), refusal.text().c_str());
    return DISP_E_EXCEPTION;
  } catch (const NotComputed&) {
    fillException(exception, source, E_FAIL, L"Not computed: too many steps would be needed.");
    return DISP_E_EXCEPTION;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception&) {
    fillException(exception, source, E_UNEXPECTED,
                  L"An error in the program itself: please report it, with the drawing.");
    return DISP_E_EXCEPTION;
  }
}

}  // namespace velt::automation
