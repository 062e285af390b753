// The converter's six calls: each looks at its pointers and makes one call of the engine. Nothing
// is thrown across them, and a null pointer makes a call that fails.
#include "include/tqpumpd2k.h"
#include "postscript/converter/OpenConverter.h"

using postscript::Postscript2Pdf;

namespace {

// Without memory for the text the failure has none.
void reportNullArgument(Postscript2Pdf& converter) {
  try {
    converter.errorText = "Exception:PSConvertToPdf needs a pointer to bytes and one to a length\n";
  } catch (...) {
  }
}

}  // namespace

extern "C" {

void* PSOpen(const float* matrix) {
  if (!matrix) {
    return nullptr;
  }
  try {
    return postscript::openConverter(matrix).release();
  } catch (...) {
    return nullptr;
  }
}

void PSStartPage(void* converter, const float* matrix) {
  if (!converter || !matrix) {
    return;
  }
  try {
    static_cast<Postscript2Pdf*>(converter)->startPage(matrix);
  } catch (...) {
    // Without memory for a fresh state the page keeps the old one.
  }
}

const char* PSConvertToPdf(void* handle, const char* bytes, int32_t* length) {
  auto* const converter = static_cast<Postscript2Pdf*>(handle);
  if (!converter) {
    return nullptr;
  }
  // No bytes at all may be at no address.
  if (!length || (!bytes && *length != 0)) {
    reportNullArgument(*converter);
    return nullptr;
  }
  return converter->convert(bytes, length);
}

PdfObject* const* PSGetPdfObjects(void* converter, uint64_t* count) {
  if (!converter || !count) {
    return nullptr;
  }
  try {
    return static_cast<Postscript2Pdf*>(converter)->getPdfObjects(count);
  } catch (...) {
    return nullptr;
  }
}

const char* PSGetErrorStr(void* converter) {
  return converter ? static_cast<Postscript2Pdf*>(converter)->errorText.c_str() : "";
}

void PSClose(void* converter) {
  try {
    delete static_cast<Postscript2Pdf*>(converter);
  } catch (...) {
    // The handle is gone whatever happens on the way.
  }
}

}  // extern "C"
