#include "postscript/engine/Interpreter.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "postscript/values/ArrayObject.h"
#include "postscript/values/Ex.h"
#include "postscript/values/Limits.h"
#include "support/DebugOutput.h"

namespace postscript {

Interpreter::Interpreter() = default;

Interpreter::~Interpreter() = default;

Observer::~Observer() = default;

void Interpreter::askWhetherToStop() const {
  if (observer && observer->wantsStop()) {
    throw Ex("postscript/lib/Interpreter", 71, "Stopped on request");
  }
}

void Interpreter::run(const char* bytes, size_t length) {
  abandoned.beginRun();
  printBuffer.clear();
  parser.setRange(bytes, length);
  suspendFlag = false;
  for (uint64_t turn = 0; turn < limits::engineTurns; ++turn) {
    if (turn % turnsPerQuestion == turnsPerQuestion - 1) {
      askWhetherToStop();
    }
    const bool fromInput = executionStack.empty();
    const Held<> object = hold(fromInput ? parser.nextToken() : executionStack.pop());
    if (!object) {
      return;
    }
    if (fromInput && !deferredStack.empty()) {
      collect(object.get());
    } else if (!object->executable) {
      operandStack.pushChecked(object.get());
    } else {
      object->execute(*this);
      if (suspendFlag) {
        return;
      }
    }
  }
}

void Interpreter::run(const char* text) {
  run(text, std::strlen(text));
}

void Interpreter::collect(PostscriptObject* token) {
  const auto* name = as<NameObject>(token);
  if (name && (name->name == "{" || name->name == "}")) {
    token->execute(*this);
  } else {
    static_cast<ArrayObject*>(deferredStack.top())->items().pushChecked(token);
  }
}

void Interpreter::listUnknownNames(const char* bytes, size_t length) {
  abandoned.beginRun();
  parser.setRange(bytes, length);
  std::map<std::string, int32_t> unknown;
  while (const Held<> token = hold(parser.nextToken())) {
    const auto* name = as<NameObject>(token.get());
    if (!name || name->name.size() < 2 || dictionaries.lookup(name->name)) {
      continue;
    }
    const auto isLowerCase = [](char c) { return c >= 'a' && c <= 'z'; };
    if (std::all_of(name->name.begin(), name->name.end(), isLowerCase)) {
      ++unknown[name->name];
    }
  }
  for (const auto& [name, count] : unknown) {
    quillpress::debugOutput((name + " (" + std::to_string(count) + ")\n").c_str());
  }
}

}  // namespace postscript
