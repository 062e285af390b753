// SecurityAttributesHolder: lets every user's programs, and those of low integrity, open the
// objects that a job makes. It owns the descriptors; keep it until the object is made.
#pragma once

#include "umpd/platform/Platform.h"

namespace umpd {

struct SecurityAttributesHolder {
  SecurityAttributes attributes;
  OwnedDescriptor descriptor;
  OwnedDescriptor labelDescriptor;  // holds the list that `descriptor` points to
};

// What to pass to the making of an object, null included. On failure the attributes stay as empty
// as they came.
const SecurityAttributes* buildSecurityAttributes(Platform& platform,
                                                  SecurityAttributesHolder& holder);

}  // namespace umpd
