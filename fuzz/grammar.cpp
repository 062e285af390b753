// Programs that a grammar makes of the fuzzer's bytes: valid operands most of the time, so that
// what lies deep is reached. Every byte of every result is read.
#include <cstdint>
#include <cstring>

#include "bench/programs/Program.h"
#include "include/tqpumpd2k.h"
#include "postscript/painting/ClearPdfObjects.h"

namespace {

volatile uint64_t sink;

void readAll(const void* bytes, uint64_t length) {
  uint64_t sum = 0;
  for (uint64_t i = 0; i < length; ++i) {
    sum += static_cast<const unsigned char*>(bytes)[i];
  }
  sink = sum;
}

void make(void*& converter, const programs::Call& call) {
  const float* matrix = programs::matrices[call.matrix].data();
  if (!converter) {
    converter = PSOpen(matrix);
  }
  if (call.kind == programs::Call::Kind::startPage) {
    PSStartPage(converter, matrix);
    return;
  }
  int32_t length =
      call.kind == programs::Call::Kind::convertNul ? -1 : static_cast<int32_t>(call.text.size());
  const char* text = PSConvertToPdf(converter, call.text.c_str(), &length);
  if (text) {
    readAll(text, static_cast<uint64_t>(length) + 1);
  }
  readAll(PSGetErrorStr(converter), std::strlen(PSGetErrorStr(converter)));
}

void readObjects(void* converter) {
  uint64_t count = 0;
  PdfObject* const* objects = PSGetPdfObjects(converter, &count);
  for (uint64_t i = 0; i < count; ++i) {
    readAll(objects[i]->data, objects[i]->data ? objects[i]->dataLength : 0);
    readAll(objects[i]->name, std::strlen(objects[i]->name));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  programs::ByteChoices choices(data, size);
  void* converters[2] = {nullptr, nullptr};
  for (const programs::Call& call : programs::makeProgram(choices)) {
    make(converters[call.secondConverter], call);
  }
  for (void* converter : converters) {
    if (converter) {
      readObjects(converter);
    }
    PSClose(converter);
  }
  postscript::clearPdfObjects();
  return 0;
}
