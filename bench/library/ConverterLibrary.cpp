#include "bench/library/ConverterLibrary.h"

#include "bench/library/SharedObject.h"

namespace bench {

namespace {

template <class Function>
void find(void* library, Function*& function, const char* name) {
  function = reinterpret_cast<Function*>(addressIn(library, name));
}

}  // namespace

ConverterLibrary::ConverterLibrary(const std::string& path) {
  void* library = loadSharedObject(path);
  find(library, open, "PSOpen");
  find(library, startPage, "PSStartPage");
  find(library, convert, "PSConvertToPdf");
  find(library, objects, "PSGetPdfObjects");
  find(library, error, "PSGetErrorStr");
  find(library, close, "PSClose");
}

}  // namespace bench
