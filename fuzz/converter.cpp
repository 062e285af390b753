// Feeds hostile programs to the converter through its calls. The first two bytes say where the
// program is cut into three calls; between the second and third a new page starts.
#include <cstring>
#include <string>

#include "include/tqpumpd2k.h"
#include "postscript/painting/ClearPdfObjects.h"

namespace {

volatile uint64_t sink;

// Reads all that a caller may read.
void readAll(const void* bytes, uint64_t length) {
  uint64_t sum = 0;
  for (uint64_t i = 0; i < length; ++i) sum += static_cast<const unsigned char*>(bytes)[i];
  sink = sum;
}

void convert(void* converter, const std::string& program) {
  auto length = static_cast<int32_t>(program.size());
  const char* text = PSConvertToPdf(converter, program.data(), &length);
  if (text) {
    readAll(text, static_cast<uint64_t>(length) + 1);
  } else {
    const char* error = PSGetErrorStr(converter);
    readAll(error, std::strlen(error));
  }
}

void readObjects(void* converter) {
  uint64_t count = 0;
  PdfObject* const* objects = PSGetPdfObjects(converter, &count);
  for (uint64_t i = 0; i < count; ++i) {
    if (objects[i]->dictionary)
      readAll(objects[i]->dictionary, std::strlen(objects[i]->dictionary));
    if (objects[i]->data) readAll(objects[i]->data, objects[i]->dataLength);
    readAll(objects[i]->name, std::strlen(objects[i]->name));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const std::string program(reinterpret_cast<const char*>(data) + 2, size - 2);
  const size_t first = program.size() * data[0] / 255;
  const size_t second = first + (program.size() - first) * data[1] / 255;
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  constexpr float turned[] = {0, 1, -1, 0, 612, 0};

  void* converter = PSOpen(identity);
  convert(converter, program.substr(0, first));
  convert(converter, program.substr(first, second - first));
  PSStartPage(converter, turned);
  convert(converter, program.substr(second) + "\n");
  readObjects(converter);
  PSClose(converter);
  postscript::clearPdfObjects();
  return 0;
}
