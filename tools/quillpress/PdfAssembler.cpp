#include "tools/quillpress/PdfAssembler.h"

#include <algorithm>
#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
#include <utility>

#include "tools/quillpress/AsciiData.h"
#include "tools/quillpress/ContentScan.h"
#include "tools/quillpress/Deflate.h"

namespace quillpress {
namespace {

constexpr int decimals = 6;

std::string dataOf(const PdfObject& record) {
  return {reinterpret_cast<const char*>(record.data), record.dataLength};
}

// A record's entries as objects; not initialized when they, into which words of the program have
// gone, are not PDF.
QPDFObjectHandle entriesOf(const PdfObject& record) {
  try {
    auto entries =
        QPDFObjectHandle::parse("<<" + std::string(record.dictionary) + ">>", record.name);
    return entries.isDictionary() ? entries : QPDFObjectHandle();
  } catch (const QPDFExc&) {
    return {};
  }
}

constexpr const char* textFilters[] = {"/ASCIIHexDecode", "/ASCII85Decode"};
constexpr const char* otherFilters[] = {"/LZWDecode", "/FlateDecode", "/RunLengthDecode",
                                        "/CCITTFaxDecode", "/DCTDecode"};

bool isOneOf(const std::string& name, const char* const* begin, const char* const* end) {
  return std::find(begin, end, name) != end;
}

// Data as they go into the file: text of digits decoded, where all of the filters are known, and
// what then has none compressed.
class RecordData {
 public:
  RecordData(std::string bytes, QPDFObjectHandle filters, bool compress)
      : bytes_(std::move(bytes)) {
    if (filters.isArray()) {
      for (auto& filter : filters.getArrayAsVector()) {
        filters_.push_back(filter.isName() ? filter.getName() : "");
      }
    }
    decodeText();
    if (filters_.empty() && (compress || isDecoded_)) {
      bytes_ = deflater_.compress(bytes_);
      filters_.push_back("/FlateDecode");
    }
  }

  const std::string& bytes() const { return bytes_; }
  QPDFObjectHandle filters() const {
    if (filters_.size() == 1) {
      return QPDFObjectHandle::newName(filters_[0]);
    }
    auto array = QPDFObjectHandle::newArray();
    for (const std::string& filter : filters_) {
      array.appendItem(QPDFObjectHandle::newName(filter));
    }
    return filters_.empty() ? QPDFObjectHandle::newNull() : array;
  }

 private:
  void decodeText() {
    const bool allKnown =
        std::all_of(filters_.begin(), filters_.end(), [](const std::string& name) {
          return isOneOf(name, std::begin(textFilters), std::end(textFilters)) ||
                 isOneOf(name, std::begin(otherFilters), std::end(otherFilters));
        });
    while (allKnown && !filters_.empty() &&
           isOneOf(filters_.front(), std::begin(textFilters), std::end(textFilters))) {
      auto decoded =
          filters_.front() == textFilters[0] ? decodeAsciiHex(bytes_) : decodeAscii85(bytes_);
      if (!decoded) {
        return;
      }
      bytes_ = std::move(*decoded);
      filters_.erase(filters_.begin());
      isDecoded_ = true;
    }
  }

  Deflater deflater_;
  std::string bytes_;
  std::vector<std::string> filters_;
  bool isDecoded_ = false;
};

// A stream with the record's entries; not initialized when they are not PDF.
QPDFObjectHandle streamOf(QPDF& pdf, const PdfObject& record, std::string bytes) {
  auto entries = entriesOf(record);
  if (!entries.isInitialized()) {
    return {};
  }
  const RecordData data(std::move(bytes), entries.getKey("/Filter"), record.compress != 0);
  auto stream = QPDFObjectHandle::newStream(&pdf);
  auto dictionary = stream.getDict();
  for (const auto& [key, value] : entries.getDictAsMap()) {
    dictionary.replaceKey(key, value);
  }
  stream.replaceStreamData(data.bytes(), data.filters(), QPDFObjectHandle::newNull());
  return stream;
}

QPDFObjectHandle arrayOf(const Matrix& matrix) {
  auto array = QPDFObjectHandle::newArray();
  for (const double number : matrix) {
    array.appendItem(QPDFObjectHandle::newReal(number, decimals));
  }
  return array;
}

Matrix matrixOf(QPDFObjectHandle array) {
  const auto matrix = array.getArrayAsMatrix();
  return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
}

// The records as objects of the file, under their names.
class Resources {
 public:
  Resources(QPDF& pdf, const std::vector<const PdfObject*>& records, const Matrix& pageMatrix)
      : pdf_(pdf), pageMatrix_(pageMatrix) {
    for (const PdfObject* record : records) {
      add(*record);
    }
  }

  // The resource dictionary for content with these names.
  QPDFObjectHandle dictionaryFor(const std::set<std::string>& names) const;
  // The same as an object of its own, which pages with the same names share.
  QPDFObjectHandle sharedFor(const std::set<std::string>& names);

  // Whether it is the name of a record that can't be placed.
  bool isMissing(const std::string& name) const {
    const auto found = entries_.find(name);
    return found != entries_.end() && !found->second.stream.isInitialized();
  }

 private:
  struct Entry {
    const char* category;     // such as "/XObject"
    QPDFObjectHandle stream;  // not initialized when the record can't be placed
  };

  void add(const PdfObject& record);
  QPDFObjectHandle patternOf(const PdfObject& record);

  QPDF& pdf_;
  Matrix pageMatrix_;
  std::map<std::string, Entry> entries_;
  std::map<std::set<std::string>, QPDFObjectHandle> shared_;
};

// A pattern's content is scanned before its own name is known, so that it can't refer to itself.
void Resources::add(const PdfObject& record) {
  const bool isPattern = record.kind == TQP_PATTERN;
  QPDFObjectHandle stream;
  if (record.dictionary[0] != '\0' && record.data != nullptr) {  // else its program failed half-way
    stream = isPattern ? patternOf(record) : streamOf(pdf_, record, dataOf(record));
  }
  entries_[record.name] = {isPattern ? "/Pattern" : "/XObject", stream};
}

// The matrix of a pattern leads to the page's own coordinates past all of the content's steps,
// past that of the page matrix too.
QPDFObjectHandle Resources::patternOf(const PdfObject& record) {
  std::string content = dataOf(record);
  const ContentScan scan = scanContent(content, letter);
  balance(content, scan);
  auto pattern = streamOf(pdf_, record, std::move(content));
  if (!pattern.isInitialized()) {
    return pattern;
  }
  auto dictionary = pattern.getDict();
  if (pageMatrix_ != identity) {
    dictionary.replaceKey("/Matrix",
                          arrayOf(multiply(matrixOf(dictionary.getKey("/Matrix")), pageMatrix_)));
  }
  dictionary.replaceKey("/Resources", dictionaryFor(scan.names));
  return pattern;
}

QPDFObjectHandle Resources::dictionaryFor(const std::set<std::string>& names) const {
  auto result = QPDFObjectHandle::newDictionary();
  for (const std::string& name : names) {
    const auto found = entries_.find(name);
    if (found == entries_.end() || !found->second.stream.isInitialized()) {
      continue;
    }
    const auto& [category, stream] = found->second;
    if (!result.hasKey(category)) {
      result.replaceKey(category, QPDFObjectHandle::newDictionary());
    }
    result.getKey(category).replaceKey(name, stream);
  }
  return result;
}

QPDFObjectHandle Resources::sharedFor(const std::set<std::string>& names) {
  auto& shared = shared_[names];
  if (!shared.isInitialized()) {
    shared = pdf_.makeIndirectObject(dictionaryFor(names));
  }
  return shared;
}

QPDFObjectHandle rectangleOf(const Box& box) {
  return QPDFObjectHandle::newFromRectangle({box.left, box.bottom, box.right, box.top});
}

bool isSame(const Box& one, const Box& other) {
  return one.left == other.left && one.bottom == other.bottom && one.right == other.right &&
         one.top == other.top;
}

// The compressed streams of the pages, in the order of their objects.
class PageStreams : public QPDFObjectHandle::StreamDataProvider {
 public:
  explicit PageStreams(PageStore& store) : store_(store) {}
  void add(const QPDFObjGen& object, const StoredStream& stream) { streams_[object] = stream; }
  void provideStreamData(const QPDFObjGen& object, Pipeline* pipeline) override {
    store_.read(streams_.at(object), [&](std::string_view bytes) {
      pipeline->write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    });
    pipeline->finish();
  }

 private:
  PageStore& store_;
  std::map<QPDFObjGen, StoredStream> streams_;
};

// Gathers the writer's many small pieces. The writer must not be left by an exception: a failure is
// kept until it is done, and what comes after it is dropped.
class Output : public Pipeline {
 public:
  explicit Output(const WriteBytes& write) : Pipeline("output", nullptr), write_(write) {}
  void write(const unsigned char* bytes, size_t length) override {
    room_.append(reinterpret_cast<const char*>(bytes), length);
    if (room_.size() >= blockSize) {
      finish();
    }
  }
  void finish() override {
    try {
      if (!failure_) {
        write_(room_);
      }
    } catch (...) {
      failure_ = std::current_exception();
    }
    room_.clear();
  }
  void rethrowFailure() const {
    if (failure_) {
      std::rethrow_exception(failure_);
    }
  }

 private:
  static constexpr size_t blockSize = 65536;
  const WriteBytes& write_;
  std::string room_;
  std::exception_ptr failure_;
};

// The tree of pages has a box for those that have no other.
QPDFObjectHandle pageOf(QPDF& pdf, const PdfPage& page, const Box& commonBox,
                        const QPDFObjectHandle& parent, const QPDFObjectHandle& resources,
                        const std::shared_ptr<PageStreams>& streams) {
  auto content = QPDFObjectHandle::newStream(&pdf);
  streams->add(content.getObjGen(), page.content);
  content.replaceStreamData(streams, QPDFObjectHandle::newName("/FlateDecode"),
                            QPDFObjectHandle::newNull());
  auto object = QPDFObjectHandle::newDictionary();
  object.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
  object.replaceKey("/Parent", parent);
  if (!isSame(page.mediaBox, commonBox)) {
    object.replaceKey("/MediaBox", rectangleOf(page.mediaBox));
  }
  if (page.rotation != 0) {
    object.replaceKey("/Rotate", QPDFObjectHandle::newInteger(page.rotation));
  }
  object.replaceKey("/Resources", resources);
  object.replaceKey("/Contents", content);
  return pdf.makeIndirectObject(object);
}

void addInfo(QPDF& pdf, const PdfInfo& info) {
  auto dictionary = QPDFObjectHandle::newDictionary();
  const std::pair<const char*, const std::string&> texts[] = {{"/Title", info.title},
                                                              {"/Author", info.author},
                                                              {"/Creator", info.creator},
                                                              {"/Subject", info.subject},
                                                              {"/Producer", info.producer}};
  for (const auto& [key, text] : texts) {
    if (!text.empty()) {
      dictionary.replaceKey(key, QPDFObjectHandle::newUnicodeString(text));
    }
  }
  for (const char* key : {"/CreationDate", "/ModDate"}) {
    if (!info.date.empty()) {
      dictionary.replaceKey(key, QPDFObjectHandle::newString(info.date));
    }
  }
  pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(dictionary));
}

}  // namespace

struct PdfAssembler::File {
  QPDF pdf;
};

PdfAssembler::PdfAssembler(const PdfDocument& document, PageStore& store,
                           const ReportMissing& reportMissing)
    : file_(std::make_unique<File>()) {
  QPDF& pdf = file_->pdf;
  pdf.emptyPDF();
  Resources resources(pdf, document.records, document.pageMatrix);
  const Box commonBox = document.pages.empty() ? letter : document.pages.front().mediaBox;
  const auto streams = std::make_shared<PageStreams>(store);
  auto tree = pdf.getRoot().getKey("/Pages");
  tree.replaceKey("/MediaBox", rectangleOf(commonBox));
  auto kids = QPDFObjectHandle::newArray();
  for (size_t i = 0; i < document.pages.size(); ++i) {
    const PdfPage& page = document.pages[i];
    kids.appendItem(pageOf(pdf, page, commonBox, tree, resources.sharedFor(page.names), streams));
    for (const std::string& name : page.names) {
      if (resources.isMissing(name)) {
        reportMissing(i, name);
      }
    }
  }
  tree.replaceKey("/Kids", kids);
  tree.replaceKey("/Count",
                  QPDFObjectHandle::newInteger(static_cast<long long>(document.pages.size())));
  addInfo(pdf, document.info);
}

PdfAssembler::~PdfAssembler() = default;

// The streams are compressed already.
void PdfAssembler::write(const WriteBytes& writeBytes) {
  Output output(writeBytes);
  QPDFWriter writer(file_->pdf);
  writer.setOutputPipeline(&output);
  writer.setCompressStreams(false);
  writer.setDecodeLevel(qpdf_dl_none);
  writer.setDeterministicID(true);
  writer.write();
  output.finish();
  output.rethrowFailure();
}

}  // namespace quillpress
