// A descriptor with a null list of rights lets everybody in. From Vista on, programs of low
// integrity need a label besides; it is made from text, and its list lies in the text's own
// descriptor.
#include "umpd/SecurityAttributesHolder.h"

#include <cstddef>
#include <cstdint>

#include "umpd/Report.h"

namespace umpd {
namespace {

constexpr size_t descriptorSize = 40;
// The length that the attributes carry is 8, not the record's own size.
constexpr uint32_t attributesLength = 8;
// A mandatory label: low integrity, no write-up.
constexpr const char* lowIntegrityLabel = "S:(ML;;NW;;;LW)";

// Lets programs of low integrity in. Failures are reported to the debugger; the steps go on.
void addLowIntegrityLabel(Platform& platform, SecurityAttributesHolder& holder) {
  Security& security = platform.security;
  const OwnedModule library = platform.modules.load(u"Advapi32.dll");
  FunctionAddress convert{};
  if (library) {
    convert = platform.modules.find(library.get(),
                                    "ConvertStringSecurityDescriptorToSecurityDescriptorA");
  }
  if (convert != FunctionAddress{}) {
    holder.labelDescriptor = security.convertText(convert, lowIntegrityLabel);
  }
  if (!holder.labelDescriptor) {
    platform.messages.narrowDebug("ConvertStringSecurityDescriptorToSecurityDescriptor failed\n");
  }

  const auto sacl = security.sacl(holder.labelDescriptor.get());
  if (!sacl) {
    platform.messages.narrowDebug("GetSecurityDescriptorSacl failed\n");
  }
  if (!security.setSacl(holder.descriptor.get(), sacl.value_or(AclHandle{}))) {
    platform.messages.narrowDebug("SetSecurityDescriptorSacl failed\n");
  }
}

}  // namespace

const SecurityAttributes* buildSecurityAttributes(Platform& platform,
                                                  SecurityAttributesHolder& holder) {
  Security& security = platform.security;
  if (platform.version.isWin9x()) {
    return nullptr;
  }
  holder.descriptor = security.allocateDescriptor(descriptorSize);
  if (!holder.descriptor) {
    return &holder.attributes;
  }
  if (!security.initialize(holder.descriptor.get())) {
    reportLastError(platform, u"InitializeSecurityDescriptor failed", serviceNotification);
    holder.descriptor.reset();
    return &holder.attributes;
  }
  if (!security.setNullDacl(holder.descriptor.get())) {
    reportLastError(platform, u"SetSecurityDescriptorDacl failed", serviceNotification);
    return &holder.attributes;
  }
  if (platform.version.isVistaOrLater()) {
    addLowIntegrityLabel(platform, holder);
  }
  holder.attributes = {attributesLength, holder.descriptor.get(), false};
  return &holder.attributes;
}

}  // namespace umpd
