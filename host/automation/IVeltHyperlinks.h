#pragma once

// The hyperlinks of an entity, as automation objects.

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

struct IVeltHyperlink : IDispatch {
  virtual HRESULT put_URL(BSTR url) = 0;
  virtual HRESULT get_URL(BSTR* url) = 0;
  virtual HRESULT put_URLDescription(BSTR description) = 0;
  virtual HRESULT get_URLDescription(BSTR* description) = 0;
};

struct IVeltHyperlinks : IDispatch {
  virtual HRESULT Item(LONG index, IVeltHyperlink** hyperlink) = 0;  // counts from 0
  virtual HRESULT get_Count(LONG* count) = 0;
};
