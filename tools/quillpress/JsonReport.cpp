#include "tools/quillpress/JsonReport.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "postscript/generated/OperatorRows.h"

namespace quillpress {
namespace {

constexpr int reportVersion = 1;

// Writes values one after the other, with the commas where they belong.
class JsonWriter {
 public:
  template <class Body>
  void object(const Body& body) {
    enclose('{', '}', body);
  }
  template <class List, class Item>
  void array(const List& list, const Item& item) {
    enclose('[', ']', [&] {
      for (const auto& each : list) {
        item(each);
      }
    });
  }
  JsonWriter& key(std::string_view name) {
    text(name);
    json_ += ':';
    afterValue_ = false;
    return *this;
  }
  void text(std::string_view value);
  void number(double value);
  void boolean(bool value) { raw(value ? "true" : "false"); }
  void null() { raw("null"); }
  // An empty text is none.
  void textOrNull(const std::string& value) { value.empty() ? null() : text(value); }

  std::string take() { return std::move(json_) + "\n"; }

 private:
  template <class Body>
  void enclose(char open, char close, const Body& body) {
    separate();
    json_ += open;
    afterValue_ = false;
    body();
    json_ += close;
    afterValue_ = true;
  }
  void separate() {
    if (afterValue_) {
      json_ += ",\n";
    }
  }
  void raw(std::string_view value) {
    separate();
    json_ += value;
    afterValue_ = true;
  }

  std::string json_;
  bool afterValue_ = false;
};

// A byte beyond ASCII is taken for Latin-1, so that the report is well-formed whatever the
// program's bytes are.
void JsonWriter::text(std::string_view value) {
  constexpr char digits[] = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      quoted.append(1, '\\').append(1, c);
    } else if (byte < 0x20 || byte >= 0x7F) {
      quoted.append("\\u00").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
    } else {
      quoted += c;
    }
  }
  raw(quoted + "\"");
}

void JsonWriter::number(double value) {
  std::array<char, 400> room;
  const double shown = std::isfinite(value) ? std::round(value * 1000) / 1000 : 0;
  const char* const end = std::to_chars(room.data(), room.data() + room.size(), shown).ptr;
  raw({room.data(), static_cast<size_t>(end - room.data())});
}

constexpr const char* statusNames[] = {"whole", "partial", "blank", "failed"};
constexpr const char* classNames[] = {"works", "text", "painting", "value", "setup", "harmless"};
constexpr const char* differenceNames[imageDifferences] = {
    "image-colours-reversed", "image-matrix-ignored", "image-decode-ignored",
    "image-components-of-colour"};

void writeBox(JsonWriter& json, const Box& box) {
  json.array(std::array{box.left, box.bottom, box.right, box.top},
             [&](double number) { json.number(number); });
}

void writeMarks(JsonWriter& json, const Marks& marks) {
  json.object([&] {
    for (const auto& [name, count] : {std::pair<const char*, size_t>{"paths", marks.paths},
                                      {"images", marks.images},
                                      {"masks", marks.masks},
                                      {"patterns", marks.patterns},
                                      {"outside", marks.outside},
                                      {"lostPaths", marks.lostPaths}}) {
      json.key(name).number(static_cast<double>(count));
    }
    json.key("extent");
    marks.extent ? writeBox(json, *marks.extent) : json.null();
  });
}

void writeLoss(JsonWriter& json, const Loss& loss) {
  json.object([&] {
    json.key("operator").text(postscript::operatorName(loss.row));
    json.key("class").text(
        classNames[static_cast<size_t>(postscript::operatorLoss(loss.row).lossClass)]);
    json.key("count").number(static_cast<double>(loss.count));
    json.key("line").number(static_cast<double>(loss.line));
  });
}

void writeFailure(JsonWriter& json, const Failure& failure) {
  json.object([&] {
    json.key("cause").text(failure.cause);
    json.key("words").text(failure.words);
    json.key("advice").textOrNull(failure.advice);
    json.key("engine").textOrNull(failure.engine);
    json.key("line").number(static_cast<double>(failure.line));
    json.key("column").number(static_cast<double>(failure.column));
    json.key("token").text(failure.token);
    json.key("source").text(failure.source);
    json.key("count").number(static_cast<double>(failure.count));
  });
}

// The entries of the object that the caller writes.
void writeEvents(JsonWriter& json, const Events& events) {
  json.key("lost").array(events.losses, [&](const Loss& loss) { writeLoss(json, loss); });
  json.key("differences").object([&] {
    for (size_t i = 0; i < imageDifferences; ++i) {
      if (events.differences[i] > 0) {
        json.key(differenceNames[i]).number(static_cast<double>(events.differences[i]));
      }
    }
  });
  json.key("failures").array(events.failures, [&](const Failure& failure) {
    writeFailure(json, failure);
  });
  json.key("moreKinds").number(static_cast<double>(events.moreKinds));
  json.key("aftermath").number(static_cast<double>(events.aftermath));
}

void writePage(JsonWriter& json, const PageReport& page) {
  json.object([&] {
    json.key("number").number(static_cast<double>(page.number));
    json.key("label").textOrNull(page.label);
    json.key("status").text(statusNames[static_cast<size_t>(page.status)]);
    json.key("box");
    writeBox(json, page.box);
    json.key("boxIsAssumed").boolean(page.boxIsAssumed);
    json.key("rotation").number(page.rotation);
    json.key("marks");
    writeMarks(json, page.marks);
    json.key("byLine").boolean(page.byLine);
    writeEvents(json, page.events);
    json.key("invalidObjects").array(page.invalid, [&](const std::string& name) {
      json.text(name);
    });
    json.key("bytes").number(static_cast<double>(page.contentBytes));
    json.key("milliseconds").number(page.milliseconds);
  });
}

void writeInput(JsonWriter& json, const InputReport& report) {
  json.object([&] {
    json.key("input").text(report.input);
    json.key("output").textOrNull(report.output);
    json.key("exitStatus").number(exitStatusOf(report));
    json.key("failure").textOrNull(report.failure);
    json.key("prolog").object([&] {
      json.key("marks");
      writeMarks(json, report.prologMarks);
      writeEvents(json, report.prolog);
    });
    json.key("pages").array(report.pages, [&](const PageReport& page) { writePage(json, page); });
  });
}

}  // namespace

std::string jsonReport(const std::vector<InputReport>& reports, int exitStatus) {
  JsonWriter json;
  json.object([&] {
    json.key("version").number(reportVersion);
    json.key("program").text("quillpress " QUILLPRESS_VERSION);
    json.key("exitStatus").number(exitStatus);
    json.key("inputs").array(reports, [&](const InputReport& report) { writeInput(json, report); });
  });
  return json.take();
}

}  // namespace quillpress
