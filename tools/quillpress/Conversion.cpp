#include "tools/quillpress/Conversion.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

#include "tools/quillpress/InputFile.h"
#include "tools/quillpress/Job.h"
#include "tools/quillpress/PagePress.h"
#include "tools/quillpress/Progress.h"

#include "tools/quillpress/system/System.h"
namespace quillpress {
namespace {

// A comment's bytes are UTF-8 if they can be, or else Latin-1.
std::string utf8Of(const std::string& text) {
  size_t following = 0;
  bool isUtf8 = true;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (following > 0) {
      isUtf8 = isUtf8 && (byte & 0xC0) == 0x80;
      --following;
    } else {
      following = byte < 0x80 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
      isUtf8 = isUtf8 && (byte < 0x80 || (byte >= 0xC2 && byte < 0xF5));
    }
  }
  if (isUtf8 && following == 0) {
    return text;
  }
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      result += c;
    } else {
      result += static_cast<char>(0xC0 | byte >> 6);
      result += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return result;
}

// The moment that builders who want the same bytes each time give; there is no other date.
std::string sourceDate() {
  const char* const text = std::getenv("SOURCE_DATE_EPOCH");
  if (text == nullptr) {
    return "";
  }
  std::time_t seconds = 0;
  const std::string_view digits(text);
  const auto [rest, error] = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  const std::tm* const time = error == std::errc() ? std::gmtime(&seconds) : nullptr;
  char room[32] = "";
  if (time != nullptr) {
    std::strftime(room, sizeof room, "D:%Y%m%d%H%M%SZ", time);
  }
  return room;
}

PdfInfo infoOf(const DscInfo& own, const PdfInfo& given) {
  const auto choose = [](const std::string& wanted, const std::string& found) {
    return utf8Of(wanted.empty() ? found : wanted);
  };
  return {choose(given.title, own.title),
          choose(given.author, own.author),
          choose(given.creator, own.creator),
          choose(given.subject, own.subject),
          "quillpress",
          sourceDate()};
}

class Conversion {
 public:
  Conversion(const std::string& input, const std::string& output, const Options& options)
      : options_(options) {
    report_.input = shownName(input);
    report_.output = output;
    if (output == input && output != "-") {
      throw FileFailure("INPUT and OUTPUT are both " + input + "; give another OUTPUT");
    }
    if (!output.empty() && isSameFile(input, output)) {
      throw FileFailure("INPUT and OUTPUT are both " + input + "; give another OUTPUT");
    }
    if (output == "-" && standardOutputIsTerminal() && !writesText()) {
      throw FileFailure("a PDF file is not for a terminal; give an OUTPUT, or > FILE");
    }
  }

  InputReport run(const std::string& input);

 private:
  bool writesText() const { return options_.contentOnly || options_.command == Command::content; }
  void convertPages(const DscDocument& document);
  void takeText(const Page& page);
  void makePdf(const DscDocument& document);
  void writeOutput(const DscDocument& document);
  void settleStatus();

  const Options& options_;
  InputReport report_;
  PageStore store_;
  std::vector<PressedPage> pressed_;
  std::string text_;
};

void Conversion::convertPages(const DscDocument& document) {
  Progress progress(report_.input, document.pages().size(), document.text().size(),
                    !options_.quiet);
  JobOptions jobOptions;
  jobOptions.pageMatrix = options_.pageMatrix;
  jobOptions.pageSize = options_.pageSize;
  jobOptions.limits = options_.limits;
  jobOptions.onTurn = [&](size_t offset) { progress.advance(offset); };
  Job job(document, jobOptions);
  PagePress press(store_, options_.pageMatrix);
  job.convert([&](Page page) {
    takeText(page);
    progress.pageDone();
    return press.put(std::move(page));
  });
  pressed_ = press.finish();
  report_.prolog = job.prologEvents();
  report_.prologMarks = job.prologMarks();
}

void Conversion::takeText(const Page& page) {
  if (writesText()) {
    text_ += page.content;
  }
}

void Conversion::settleStatus() {
  for (PressedPage& page : pressed_) {
    page.report.status = statusOf(page.report);
    report_.pages.push_back(std::move(page.report));
  }
}

// Objects that are no PDF are known once the file is put together, and with them the pages' status.
// A strict run may end there, so that the output is only begun afterwards.
void Conversion::writeOutput(const DscDocument& document) {
  PdfDocument pdf;
  std::vector<size_t> reports;
  for (size_t i = 0; i < pressed_.size(); ++i) {
    const PageReport& report = report_.pages[i];
    if (report.status != PageStatus::failed) {
      pdf.pages.push_back(
          {pressed_[i].content, std::move(pressed_[i].names), report.box, report.rotation});
      reports.push_back(i);
    }
  }
  pressed_.clear();
  const ObjectRecords records;
  pdf.records = records.list();
  pdf.pageMatrix = options_.pageMatrix;
  pdf.info = infoOf(document.info(), options_.info);
  std::optional<OutputFile> file;
  PdfAssembler assembler(pdf, store_, [&](size_t page, const std::string& name) {
    PageReport& report = report_.pages[reports[page]];
    report.invalid.push_back(name);
    report.status = statusOf(report);
  });
  if (report_.output.empty() || (options_.strict && exitStatusOf(report_) != exitWhole)) {
    return;
  }
  file.emplace(report_.output);
  assembler.write([&](std::string_view bytes) { file->write(bytes); });
  file->commit();
}

InputReport Conversion::run(const std::string& input) {
  const InputFile file(input);
  const DscDocument document(file.bytes());
  convertPages(document);
  settleStatus();
  if (exitStatusOf(report_) == exitNothingMade) {
    report_.failure = "no page of " + report_.input + " could be converted; nothing was written";
  } else if (writesText()) {
    OutputFile output(report_.output);
    output.write(text_);
    output.commit();
  } else {
    writeOutput(document);
  }
  if (report_.failure.empty() && options_.strict && exitStatusOf(report_) != exitWhole) {
    report_.failure = report_.input + " would not come out whole; nothing was written";
  }
  return report_;
}

template <class Run>
InputReport guarded(const std::string& input, const std::string& output, const Run& run) {
  InputReport report;
  report.input = shownName(input);
  report.output = output;
  try {
    clearPdfObjects();
    return run();
  } catch (const std::bad_alloc&) {
    report.failure = "not enough memory for " + report.input + "; convert fewer pages at a time";
  } catch (const FileFailure& failure) {
    report.failure = failure.what();
  } catch (const std::exception& failure) {
    report.failure = report.input + ": " + failure.what();
  }
  return report;
}

}  // namespace

InputReport convertFile(const std::string& input, const std::string& output,
                        const Options& options) {
  return guarded(input, output, [&] { return Conversion(input, output, options).run(input); });
}

InputReport writeObjects(const std::string& input, const Options& options) {
  return guarded(input, "", [&] {
    const InputReport report = Conversion(input, "", options).run(input);
    std::filesystem::create_directories(systemPath(options.folder));
    const ObjectRecords records;
    for (const PdfObject* record : records.list()) {
      const std::string path = options.folder + "/" + (record->name + 1);
      const auto write = [](const std::string& name, std::string_view bytes) {
        OutputFile file(name);
        file.write(bytes);
        file.commit();
      };
      write(path + ".dictionary", record->dictionary != nullptr ? record->dictionary : "");
      write(path + ".data", {reinterpret_cast<const char*>(record->data), record->dataLength});
    }
    return report;
  });
}

}  // namespace quillpress
