#include "postscript/operators/FileOperators.h"

#include <algorithm>
#include <utility>

#include "postscript/engine/FileObject.h"
#include "postscript/engine/Operands.h"
#include "postscript/operators/EncodedBytes.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/FileOperators";

// The operands of a read: the string on top, then the file.
struct ReadOperands {
  ReadOperands(Interpreter& ps, const char* name)
      : string(popAs<StringObject>(ps, name)), file(popAs<FileObject>(ps, name)) {}

  // The input ended too early: everything goes back, and the next run begins with the operator.
  void suspend(Interpreter& ps, NameObject* readOperator) const {
    ps.operandStack.pushChecked(file.get());
    ps.operandStack.pushChecked(string.get());
    ps.executionStack.pushChecked(readOperator);
    ps.suspendFlag = true;
  }

  Held<StringObject> string;
  Held<FileObject> file;
};

void expectCurrentFile(const FileObject& file, int32_t line, const char* message) {
  if (file.body().mode != FileData::Mode::currentFile) {
    throw Ex(sourceFile, line, message);
  }
}

void pushGathered(Interpreter& ps, PartialText& partial) {
  partial.share.resize(0);
  pushString(ps, std::exchange(partial.text, {}));
  pushBoolean(ps, !ps.parser.atEnd());
}

// Nothing is read: the result is the whole text at the end of the chain, with the filters' names.
void readFilter(Interpreter& ps, const ReadOperands& operands) {
  const FileData& chain = operands.file->body();
  if (!chain.base) {
    throw Ex(sourceFile, 226, "Expected base object to be string");
  }
  ps.memory.budget.expectRoom(chain.base->view().size());
  pushString(ps, Text(chain.base->view()))->filters() = chain.filters;
  pushBoolean(ps, true);
  if (operands.string->refCount > 0) {
    operands.string->append(chain.base->text());
  }
}

void checkEodOperands(Interpreter& ps) {
  const auto eod = popAs<StringObject>(ps, "SubFileDecode EODString param");
  const auto count = popAs<IntegerObject>(ps, "SubFileDecode EODCount param");
  if (!eod->view().empty() || count->value != 0) {
    throw Ex(sourceFile, 101, "Unsupported SubFileDecode EOD params");
  }
}

}  // namespace

void CurrentfileOperator::execute(Interpreter& ps) {
  push<FileObject>(ps, *ps.memory.current, ps.parser);
}

void ReadOperator::execute(Interpreter& ps) {
  const auto file = popAs<FileObject>(ps, "read operator");
  const int32_t byte = file->readByte(ps.parser);
  if (byte != 0) {
    pushInteger(ps, byte);
  }
  pushBoolean(ps, byte != 0);
}

void ReadstringOperator::execute(Interpreter& ps) {
  const ReadOperands operands(ps, "readstring");
  if (operands.file->body().source) {
    return readFilter(ps, operands);
  }
  expectCurrentFile(*operands.file, 146, "Only supports readstring from currentfile");
  const size_t target = operands.string->view().size();
  // White space is dropped by a call that starts afresh, through to its end.
  const std::string_view input = ps.parser.unread();
  Text& text = partial_.text;
  if (text.size() < target) {
    const std::string_view part = input.substr(0, target - text.size());
    partial_.share.expectText(text, text.size() + part.size());
    if (text.empty()) {
      ps.parser.take(appendWithoutSpace(input, target, text));
    } else {
      text.append(part);
      ps.parser.take(part.size());
    }
  }
  if (text.size() < target) {
    return operands.suspend(ps, this);
  }
  pushGathered(ps, partial_);
}

void ReadhexstringOperator::execute(Interpreter& ps) {
  const ReadOperands operands(ps, "readhexstring");
  expectCurrentFile(*operands.file, 340, "Only supports readline from currentfile");
  const size_t target = operands.string->view().size();
  Text& text = partial_.text;
  if (text.size() < target) {
    const std::string_view input = ps.parser.unread();
    partial_.share.expectText(text,
                              text.size() + std::min(target - text.size(), input.size() / 2 + 1));
    ps.parser.take(appendHexBytes(input, target, pendingDigit, text));
  }
  if (text.size() < target) {
    return operands.suspend(ps, this);
  }
  pushGathered(ps, partial_);
}

void ReadlineOperator::execute(Interpreter& ps) {
  const ReadOperands operands(ps, "readline");
  expectCurrentFile(*operands.file, 264, "Only supports readline from currentfile");
  Text line;
  if (!operands.file->readLine(ps.parser, line)) {
    return operands.suspend(ps, this);
  }
  const Text& text = pushString(ps, std::move(line))->text();
  if (operands.string->refCount > 0) {
    operands.string->append(text);
  }
  pushBoolean(ps, !text.empty() || !ps.parser.atEnd());
}

void FilterOperator::execute(Interpreter& ps) {
  const auto filter = popAs<NameObject>(ps, "filter operator");
  if (filter->name() == "SubFileDecode") {
    checkEodOperands(ps);
  }
  const Held<> source = popObject(ps);
  if (source->type == TypeTag::string || source->type == TypeTag::file) {
    push<FileObject>(ps, *ps.memory.current, source.get(), std::string(filter->name()));
  } else if (auto* procedure = as<ArrayObject>(source.get())) {
    // The procedure runs first; then this operator, with the name and what the procedure left.
    ps.operandStack.pushChecked(filter.get());
    ps.executionStack.pushChecked(this);
    ps.executionStack.pushChecked(procedure);
    procedure->executable = true;
    procedure->execIndex = 0;
  } else {
    throw Ex(sourceFile, 124, "SubFileDecode expected string or proc param");
  }
}

void addFileOperators(OperatorRegistry& registry, Budget& budget) {
  registry.add<CurrentfileOperator>();
  registry.add<ReadOperator>();
  registry.add<ReadlineOperator>();
  registry.add<ReadhexstringOperator>(budget);
  registry.add<FilterOperator>();
  registry.add<ReadstringOperator>(budget);
}

}  // namespace postscript
