#include "tools/quillpress/ContentScan.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFTokenizer.hh>

namespace quillpress {
namespace {

class Scanner : public QPDFObjectHandle::TokenFilter {
 public:
  ContentScan result;

  void handleToken(const QPDFTokenizer::Token& token) override {
    if (token.getType() == QPDFTokenizer::tt_name) {
      result.names.insert(token.getValue());
    } else if (token.isWord("q")) {
      ++result.savesWithoutRestore;
    } else if (token.isWord("Q")) {
      restore();
    }
  }

 private:
  void restore() {
    if (result.savesWithoutRestore > 0) {
      --result.savesWithoutRestore;
    } else {
      ++result.restoresWithoutSave;
    }
  }
};

std::string repeated(const char* text, size_t count) {
  std::string result;
  while (count-- > 0) {
    result += text;
  }
  return result;
}

}  // namespace

ContentScan scanContent(const std::string& content) {
  QPDF scratch;
  scratch.emptyPDF();
  Scanner scanner;
  QPDFObjectHandle::newStream(&scratch, content).filterAsContents(&scanner);
  return scanner.result;
}

std::string balanced(const std::string& content, const ContentScan& scan) {
  return repeated("q\n", scan.restoresWithoutSave) + content +
         repeated("\nQ", scan.savesWithoutRestore);
}

}  // namespace quillpress
