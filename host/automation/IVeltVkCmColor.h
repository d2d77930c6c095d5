#pragma once

// A color as an automation object. The value is the one of VkCmColor.

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

struct IVeltVkCmColor : IDispatch {
  virtual HRESULT put_EntityColor(LONG value) = 0;
  virtual HRESULT get_EntityColor(LONG* value) = 0;
  virtual HRESULT get_ColorName(BSTR* name) = 0;
  virtual HRESULT get_BookName(BSTR* name) = 0;
  virtual HRESULT SetNames(BSTR colorName, BSTR bookName) = 0;
};
