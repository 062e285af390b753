// The converter's six calls. Nothing is thrown across them.
#include "include/tqpumpd2k.h"
#include "postscript/converter/OpenConverter.h"

using postscript::Postscript2Pdf;

extern "C" {

void* PSOpen(const float* matrix) {
  try {
    return postscript::openConverter(matrix).release();
  } catch (...) {
    return nullptr;
  }
}

void PSStartPage(void* converter, const float* matrix) {
  try {
    static_cast<Postscript2Pdf*>(converter)->startPage(matrix);
  } catch (...) {
    // Without memory for a fresh state the page keeps the old one.
  }
}

const char* PSConvertToPdf(void* converter, const char* bytes, int32_t* length) {
  return static_cast<Postscript2Pdf*>(converter)->convert(bytes, length);
}

PdfObject* const* PSGetPdfObjects(void* converter, uint64_t* count) {
  try {
    return static_cast<Postscript2Pdf*>(converter)->getPdfObjects(count);
  } catch (...) {
    return nullptr;
  }
}

const char* PSGetErrorStr(void* converter) {
  return static_cast<Postscript2Pdf*>(converter)->errorText.c_str();
}

void PSClose(void* converter) {
  try {
    delete static_cast<Postscript2Pdf*>(converter);
  } catch (...) {
    // The handle is gone whatever happens on the way.
  }
}

}  // extern "C"
