// FrontEnd: what the print front end makes of a document's title, under given settings. It runs on
// a simulated machine, so that every system can show what Windows would.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillpress {

using PrinterSettingList = std::vector<std::pair<std::string, std::string>>;

// All texts are UTF-8. The name of the output, beside files that exist already; none if the rules
// find none.
std::optional<std::string> outputNameOf(const std::string& title,
                                        const PrinterSettingList& settings,
                                        const std::vector<std::string>& existing);

// The XMP packet, dated now.
std::string xmpPacketOf(const std::string& title, const PrinterSettingList& settings);

}  // namespace quillpress
