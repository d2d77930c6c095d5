#pragma once

// The hyperlinks of an entity, as automation objects. The layer compares entities by their first links: the same when
// the URLs of both are equal, or both have no link.

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

// One link. Strings that it answers are the caller's to free.
struct IVeltHyperlink : IDispatch {
  // Where the link leads, and its text for users. The layer calls get_URL alone.
  virtual HRESULT put_URL(BSTR url) = 0;
  virtual HRESULT get_URL(BSTR* url) = 0;
  virtual HRESULT put_URLDescription(BSTR description) = 0;
  virtual HRESULT get_URLDescription(BSTR* description) = 0;
};

// Called by: GetPropertiesInfo, when it compares the values of property 1301. A value without this
// interface is different from any other; a link that fails, or has no URL, counts as no link.
struct IVeltHyperlinks : IDispatch {
  // The link of that index, from 0, with a reference for the caller. A failure when there is none.
  virtual HRESULT Item(LONG index, IVeltHyperlink** hyperlink) = 0;
  // Not called by the layer.
  virtual HRESULT get_Count(LONG* count) = 0;
};
