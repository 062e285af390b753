#include "tests/quillpress/ReadPdf.h"

#include <gtest/gtest.h>

#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

namespace quillpress {
namespace {

std::string dataOf(QPDFObjectHandle stream) {
  const bool isPlain = stream.getDict().getKey("/Filter").unparse() == "/FlateDecode";
  const auto data = isPlain ? stream.getStreamData() : stream.getRawStreamData();
  return {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()};
}

PdfPageView viewOf(QPDFPageObjectHelper page) {
  PdfPageView view;
  for (auto number : page.getMediaBox(false).getArrayAsVector()) {
    view.mediaBox.push_back(number.getNumericValue());
  }
  view.content = dataOf(page.getObjectHandle().getKey("/Contents"));
  for (auto& [category, names] : page.getObjectHandle().getKey("/Resources").getDictAsMap()) {
    for (auto& [name, stream] : names.getDictAsMap()) {
      view.resources.push_back(
          {category, name, stream.getObjectID(), stream.getDict().unparse(), dataOf(stream)});
    }
  }
  return view;
}

}  // namespace

std::vector<PdfPageView> readPdf(const std::string& path) {
  QPDF pdf;
  pdf.setSuppressWarnings(true);
  pdf.processFile(path.c_str());
  std::vector<PdfPageView> views;
  for (const auto& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
    views.push_back(viewOf(page));
  }
  EXPECT_FALSE(pdf.anyWarnings());
  return views;
}

}  // namespace quillpress
