// FileObject: the current file, which is the rest of the input, or a decode filter over a string or
// another file. Filters are never run: they are names that go on to the PDF.
#pragma once

#include <string>

#include "postscript/values/Budget.h"
#include "postscript/values/CompositeObject.h"
#include "postscript/values/StringObject.h"

namespace postscript {

class Parser;

class FileData : public CompositeData {
 public:
  enum class Mode : uint32_t { currentFile = 1, filter = 2 };

  // The current file. One byte of white space in front of it is eaten.
  FileData(Budget& budget, Parser& parser);
  // A filter. Fails for a source that is neither string nor file.
  FileData(Budget& budget, PostscriptObject* filterSource, std::string name);
  ~FileData() override;

  void forEachElement(const Visit& visit) const override {
    if (source) {
      visit(*source);
    }
  }
  void clearContents() override;

  const Mode mode;
  PostscriptObject* source;  // counted; null for the current file
  const std::string filterName;
  // What reading through the chain of filters that begins here comes to: the names of all, and the
  // string at the end, null if there is something else.
  const FilterNames filters;
  const StringObject* const base;
  const uint32_t limit;

 private:
  BudgetShare share_;
};

class FileObject : public CompositeObject {
 public:
  static constexpr TypeTag tag = TypeTag::file;

  FileObject(VirtualMemoryObject& space, Parser& parser);
  FileObject(VirtualMemoryObject& space, PostscriptObject* source, std::string filterName);

  PostscriptObject* clone() const override { return new FileObject(*this); }

  FileData& body() const { return *static_cast<FileData*>(data); }
  // Takes one byte of the current file, sign-extended. Fails when there is none.
  int32_t readByte(Parser& parser) const;
  // Takes a line of the current file; false when its end is not there yet.
  bool readLine(Parser& parser, Text& line) const;

 private:
  FileObject(const FileObject& source) : CompositeObject(source, source.executable) {}
};

}  // namespace postscript
