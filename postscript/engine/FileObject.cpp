#include "postscript/engine/FileObject.h"

#include <utility>

#include "postscript/engine/Parser.h"
#include "postscript/values/Ex.h"
#include "postscript/values/VirtualMemory.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "FileObject";

PostscriptObject* checkedSource(PostscriptObject* source) {
  if (source->type != TypeTag::string && source->type != TypeTag::file) {
    throw Ex(sourceFile, 50, "Unsupported FileData source object type");
  }
  return source;
}

// What a file takes besides its filter's name: body and handle.
constexpr size_t bytesOfFile = 256;

FilterNames filtersOver(Budget& budget, const PostscriptObject& source, const std::string& name) {
  const auto* file = as<FileObject>(&source);
  FilterNames names = file ? file->body().filters : as<StringObject>(&source)->filters();
  return name == "SubFileDecode" ? names : FilterNames(budget, name, std::move(names));
}

const StringObject* baseOf(const PostscriptObject& source) {
  const auto* file = as<FileObject>(&source);
  return file ? file->body().base : as<StringObject>(&source);
}

}  // namespace

FileData::FileData(Budget& budget, Parser& parser)
    : CompositeData(TypeTag::file),
      mode(Mode::currentFile),
      source(nullptr),
      base(nullptr),
      limit(0),
      share_(&budget, bytesOfFile) {
  if (parser.atEnd()) {
    return;
  }
  switch (parser.peek()) {
    case '\n':
    case '\r':
    case ' ':
    case '\t':
    case '\f':
      parser.skip();
      break;
    default:
      break;
  }
}

FileData::FileData(Budget& budget, PostscriptObject* filterSource, std::string name)
    : CompositeData(TypeTag::file),
      mode(Mode::filter),
      source(checkedSource(filterSource)),
      filterName(std::move(name)),
      filters(filtersOver(budget, *source, filterName)),
      base(baseOf(*source)),
      limit(0x7fffffff),
      share_(&budget, bytesOfFile + filterName.size()) {
  ++source->refCount;
}

FileData::~FileData() {
  clearContents();
}

void FileData::clearContents() {
  if (source) {
    giveUp(std::exchange(source, nullptr));
  }
  share_.resize(0);
}

FileObject::FileObject(VirtualMemoryObject& space, Parser& parser)
    : CompositeObject(space, std::make_unique<FileData>(space.budget(), parser)) {}

FileObject::FileObject(VirtualMemoryObject& space, PostscriptObject* source, std::string filterName)
    : CompositeObject(space,
                      std::make_unique<FileData>(space.budget(), source, std::move(filterName))) {}

int32_t FileObject::readByte(Parser& parser) const {
  if (body().mode != FileData::Mode::currentFile) {
    throw Ex(sourceFile, 83, "Read not supported on this file type");
  }
  if (parser.atEnd()) {
    throw Ex(sourceFile, 76,
             "Progam attempting to read char when insufficient current file is loaded");
  }
  return signedByte(parser.get());
}

bool FileObject::readLine(Parser& parser, Text& line) const {
  if (body().mode != FileData::Mode::currentFile) {
    throw Ex(sourceFile, 96, "Read not supported on this file type");
  }
  return parser.readLine(line);
}

}  // namespace postscript
