// quillpress: makes PDF files of PostScript pages. Start at Conversion.
#include <algorithm>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "tools/quillpress/Conversion.h"
#include "tools/quillpress/ExitStatus.h"
#include "tools/quillpress/Files.h"
#include "tools/quillpress/FrontEnd.h"
#include "tools/quillpress/JsonReport.h"
#include "tools/quillpress/OperatorList.h"
#include "tools/quillpress/Options.h"
#include "tools/quillpress/Summary.h"
#include "tools/quillpress/system/System.h"

namespace {

using namespace quillpress;

// Of several inputs: nothing made of any, or something missing in some.
int overallStatus(const std::vector<InputReport>& reports, bool strict) {
  size_t whole = 0;
  size_t nothing = 0;
  for (const InputReport& report : reports) {
    const int status = exitStatusOf(report);
    whole += status == exitWhole ? 1 : 0;
    nothing += status == exitNothingMade || (strict && status != exitWhole) ? 1 : 0;
  }
  if (nothing == reports.size()) {
    return exitNothingMade;
  }
  return whole == reports.size() ? exitWhole : exitIncomplete;
}

int writeReport(const Options& options, const std::vector<InputReport>& reports, int status) {
  if (!options.json.empty()) {
    OutputFile file(options.json);
    file.write(jsonReport(reports, status));
    file.commit();
  }
  return status;
}

int convertAll(const Options& options) {
  if (options.limits.bytes > 0) {
    limitMemory(options.limits.bytes);
  }
  std::vector<InputReport> reports;
  for (size_t i = 0; i < options.inputs.size(); ++i) {
    const bool isChecked = options.command == Command::check;
    reports.push_back(convertFile(options.inputs[i], isChecked ? "" : options.outputs[i], options));
    if (isChecked) {
      writeVerdict(std::cout, reports.back());
    } else {
      writeSummary(std::cerr, reports.back(), options.quiet);
    }
  }
  return writeReport(options, reports, overallStatus(reports, options.strict));
}

int writeAllObjects(const Options& options) {
  std::vector<InputReport> reports;
  for (const std::string& input : options.inputs) {
    reports.push_back(writeObjects(input, options));
    if (!reports.back().failure.empty()) {
      std::cerr << "quillpress: " << reports.back().failure << '\n';
    }
  }
  return writeReport(options, reports, overallStatus(reports, false));
}

int showName(const Options& options) {
  const auto name = outputNameOf(options.title, options.settings, options.existing);
  if (!name) {
    std::cerr << "quillpress: the rules find no name that is free; change the settings\n";
    return exitNothingMade;
  }
  std::cout << *name << '\n';
  return exitWhole;
}

int run(const Options& options) {
  switch (options.command) {
    case Command::name:
      return showName(options);
    case Command::xmp:
      std::cout << xmpPacketOf(options.title, options.settings) << '\n';
      return exitWhole;
    case Command::operators:
      return listOperators(std::cout, options.inputs) ? exitWhole : exitNothingMade;
    case Command::objects:
      return writeAllObjects(options);
    default:
      return convertAll(options);
  }
}

}  // namespace

int main(int argc, char** argv) {
  makeStandardStreamsBinary();
  prepareSignals();
  try {
    int exitStatus = exitWhole;
    const auto options = parseOptions(systemArguments(argc, argv), exitStatus);
    return options ? run(*options) : exitStatus;
  } catch (const std::bad_alloc&) {
    std::cerr << "quillpress: not enough memory for this file; convert fewer pages at a time\n";
  } catch (const std::exception& failure) {
    std::cerr << "quillpress: " << failure.what() << '\n';
  }
  return exitNothingMade;
}
