// quillpress: turns PostScript pages into a PDF file through the library's calls.
// The road of a file: Files reads it, DscDocument finds its pages, Job has them converted,
// PdfAssembler makes the PDF, Files writes it.

#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tools/quillpress/DscDocument.h"
#include "tools/quillpress/ExitStatus.h"
#include "tools/quillpress/Files.h"
#include "tools/quillpress/Job.h"
#include "tools/quillpress/Options.h"
#include "tools/quillpress/PdfAssembler.h"
#include "tools/quillpress/system/System.h"

namespace {

using namespace quillpress;

std::string nameOf(const std::string& input) {
  return input == "-" ? "standard input" : input;
}

// Tells of what is wrong, and remembers that something was.
class Complaints {
 public:
  explicit Complaints(const std::string& inputName) : input(inputName) {}
  void add(const std::string& where, const std::string& why) {
    std::cerr << "quillpress: " << input << ": " << where << ": " << why << '\n';
    any = true;
  }
  bool exist() const { return any; }

 private:
  std::string input;
  bool any = false;
};

std::string contentOf(const std::vector<ConvertedPage>& pages) {
  std::string text;
  for (const ConvertedPage& page : pages) {
    text += page.content;
  }
  return text;
}

std::string pdfOf(std::vector<ConvertedPage> converted, const Job& job, const Options& options,
                  Complaints& complaints) {
  std::vector<PdfPage> pages;
  for (ConvertedPage& page : converted) {
    const Box mediaBox = options.pageSize.value_or(page.box.value_or(letter));
    pages.push_back({std::move(page.content), mediaBox});
  }
  return assemblePdf(pages, job.objects(), options.pageMatrix,
                     [&](size_t page, const std::string& name) {
                       complaints.add("page " + std::to_string(converted[page].number),
                                      name + " is missing: what the program gave is no valid PDF");
                     });
}

std::string readPostScript(const std::string& input) {
  std::string bytes = readFile(input);
  if (bytes.empty()) {
    throw FileFailure(nameOf(input) + " is empty; give a file with PostScript in it");
  }
  if (bytes.starts_with("%PDF-")) {
    throw FileFailure(nameOf(input) + " is a PDF file already; give a PostScript file");
  }
  return bytes;
}

int convert(const Options& options) {
  if (isSameFile(options.input, options.output)) {
    throw FileFailure("INPUT and OUTPUT are both " + options.input + "; give another OUTPUT");
  }
  const DscDocument document(readPostScript(options.input));
  Complaints complaints(nameOf(options.input));
  Job job(document, options.pageMatrix,
          [&](const std::string& where, const std::string& why) { complaints.add(where, why); });
  const auto pages = job.convertPages();
  if (pages.empty()) {
    throw std::runtime_error("no page of " + nameOf(options.input) + " could be converted; " +
                             "nothing was written");
  }
  writeFile(options.output,
            options.contentOnly ? contentOf(pages) : pdfOf(pages, job, options, complaints));
  return complaints.exist() ? exitPageFailed : exitAllWell;
}

}  // namespace

int main(int argc, char** argv) {
  makeStandardStreamsBinary();
  try {
    int exitStatus = exitAllWell;
    const auto options = parseOptions(systemArguments(argc, argv), exitStatus);
    return options ? convert(*options) : exitStatus;
  } catch (const std::bad_alloc&) {
    std::cerr << "quillpress: not enough memory for this file; convert fewer pages at a time\n";
  } catch (const std::exception& failure) {
    std::cerr << "quillpress: " << failure.what() << '\n';
  }
  return quillpress::exitNothingUsable;
}
