#include "tools/quillpress/PdfAssembler.h"

#include <map>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>
#include <set>

#include "tools/quillpress/ContentScan.h"

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

// A stream with the record's entries; not initialized when they are not PDF.
QPDFObjectHandle streamOf(QPDF& pdf, const PdfObject& record, const std::string& data) {
  auto entries = entriesOf(record);
  if (!entries.isInitialized()) {
    return {};
  }
  auto stream = QPDFObjectHandle::newStream(&pdf, data);
  auto dictionary = stream.getDict();
  for (const auto& [key, value] : entries.getDictAsMap()) {
    dictionary.replaceKey(key, value);
  }
  stream.setFilterOnWrite(record.compress != 0);
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

std::string concatenation(const Matrix& matrix) {
  std::string text;
  for (const double number : matrix) {
    text += QUtil::double_to_string(number, decimals) + ' ';
  }
  return text + "cm\n";
}

// The records as objects of the file, under their names.
class Resources {
 public:
  Resources(QPDF& file, const std::vector<const PdfObject*>& records, const Matrix& matrix)
      : pdf(file), pageMatrix(matrix) {
    for (const PdfObject* record : records) {
      add(*record);
    }
  }

  // The resource dictionary for content with these names.
  QPDFObjectHandle dictionaryFor(const std::set<std::string>& names) const;

  // Whether it is the name of a record that can't be placed.
  bool isMissing(const std::string& name) const {
    const auto found = entries.find(name);
    return found != entries.end() && !found->second.stream.isInitialized();
  }

 private:
  struct Entry {
    const char* category;     // such as "/XObject"
    QPDFObjectHandle stream;  // not initialized when the record can't be placed
  };

  void add(const PdfObject& record);
  QPDFObjectHandle patternOf(const PdfObject& record);

  QPDF& pdf;
  Matrix pageMatrix;
  std::map<std::string, Entry> entries;
};

// A pattern's content is scanned before its own name is known, so that it can't refer to itself.
void Resources::add(const PdfObject& record) {
  const bool isPattern = record.kind == TQP_PATTERN;
  QPDFObjectHandle stream;
  if (record.dictionary[0] != '\0' && record.data != nullptr) {  // else its program failed half-way
    stream = isPattern ? patternOf(record) : streamOf(pdf, record, dataOf(record));
  }
  entries[record.name] = {isPattern ? "/Pattern" : "/XObject", stream};
}

// The matrix of a pattern leads to the page's own coordinates past all of the content's steps,
// past that of the page matrix too.
QPDFObjectHandle Resources::patternOf(const PdfObject& record) {
  const std::string content = dataOf(record);
  const ContentScan scan = scanContent(content);
  auto pattern = streamOf(pdf, record, balanced(content, scan));
  if (!pattern.isInitialized()) {
    return pattern;
  }
  auto dictionary = pattern.getDict();
  if (pageMatrix != identity) {
    dictionary.replaceKey("/Matrix",
                          arrayOf(multiply(matrixOf(dictionary.getKey("/Matrix")), pageMatrix)));
  }
  dictionary.replaceKey("/Resources", dictionaryFor(scan.names));
  return pattern;
}

QPDFObjectHandle Resources::dictionaryFor(const std::set<std::string>& names) const {
  auto result = QPDFObjectHandle::newDictionary();
  for (const std::string& name : names) {
    const auto found = entries.find(name);
    if (found == entries.end() || !found->second.stream.isInitialized()) {
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

void addPage(QPDF& pdf, const std::string& content, const Box& box,
             const QPDFObjectHandle& resources) {
  auto page = QPDFObjectHandle::newDictionary();
  page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
  page.replaceKey("/MediaBox",
                  QPDFObjectHandle::newFromRectangle({box.left, box.bottom, box.right, box.top}));
  page.replaceKey("/Resources", resources);
  page.replaceKey("/Contents", QPDFObjectHandle::newStream(&pdf, content));
  QPDFPageDocumentHelper(pdf).addPage(QPDFPageObjectHelper(pdf.makeIndirectObject(page)), false);
}

std::string written(QPDF& pdf) {
  QPDFWriter writer(pdf);
  writer.setOutputMemory();
  writer.setDeterministicID(true);
  writer.write();
  const auto bytes = writer.getBufferSharedPointer();
  return {reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize()};
}

}  // namespace

std::string assemblePdf(const std::vector<PdfPage>& pages,
                        const std::vector<const PdfObject*>& records, const Matrix& pageMatrix,
                        const ReportMissing& reportMissing) {
  QPDF pdf;
  pdf.emptyPDF();
  const Resources resources(pdf, records, pageMatrix);
  const std::string step = pageMatrix == identity ? "" : concatenation(pageMatrix);
  for (size_t i = 0; i < pages.size(); ++i) {
    const ContentScan scan = scanContent(pages[i].content);
    addPage(pdf, step + balanced(pages[i].content, scan), pages[i].mediaBox,
            resources.dictionaryFor(scan.names));
    for (const std::string& name : scan.names) {
      if (resources.isMissing(name)) {
        reportMissing(i, name);
      }
    }
  }
  return written(pdf);
}

}  // namespace quillpress
