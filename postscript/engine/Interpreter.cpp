#include "postscript/engine/Interpreter.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "postscript/values/ArrayObject.h"
#include "postscript/values/Ex.h"
#include "postscript/values/Limits.h"
#include "postscript/values/NameObject.h"
#include "support/DebugOutput.h"

namespace postscript {

Interpreter::Interpreter()
    : openBrace_(memory.symbols.symbolOf("{")), closeBrace_(memory.symbols.symbolOf("}")) {
  openBrace_.take();
  closeBrace_.take();
}

Interpreter::~Interpreter() {
  openBrace_.giveBack();
  closeBrace_.giveBack();
}

Observer::~Observer() = default;

void Interpreter::askWhetherToStop() {
  turnsLeft_ = turnsPerQuestion;
  if (observer && observer->wantsStop()) {
    throw Ex("postscript/lib/Interpreter", 71, "Stopped on request");
  }
  if (++questions_ >= limits::engineTurns / turnsPerQuestion) {
    suspendFlag = true;
  }
}

void Interpreter::run(const char* bytes, size_t length) {
  abandoned.beginRun();
  if (!printBuffer.empty()) {
    printBuffer = {};
    printShare.resize(0);
  }
  parser.setRange(bytes, length);
  suspendFlag = false;
  turnsLeft_ = turnsPerQuestion;
  questions_ = 0;
  try {
    runTurns();
  } catch (...) {
    abandoned.endFailedRun();
    throw;
  }
}

void Interpreter::run(const char* text) {
  run(text, std::strlen(text));
}

void Interpreter::runTurns() {
  while (!suspendFlag) {
    PostscriptObject* top = executionStack.top();
    if (top && top->runBy == RunBy::array && top->executable) {
      runArray(static_cast<ArrayObject*>(top));
      continue;
    }
    countTurn();
    if (top) {
      const Held<> object = hold(executionStack.pop());
      runObject(object.get());
    } else if (!runToken()) {
      return;
    }
  }
}

bool Interpreter::runToken() {
  const Token token = parser.next();
  const bool collecting = !deferredStack.empty();
  ObjectStack& target =
      collecting ? static_cast<ArrayObject*>(deferredStack.top())->items() : operandStack;
  switch (token.kind) {
    case Token::Kind::none:
      return false;
    case Token::Kind::integer:
      target.pushInteger(token.integer);
      return true;
    case Token::Kind::real:
      target.pushReal(token.real);
      return true;
    case Token::Kind::name:
      if (!collecting || token.symbol == &openBrace_ || token.symbol == &closeBrace_) {
        runName(*token.symbol);
      } else {
        target.pushNew<NameObject>(*token.symbol);
      }
      return true;
    case Token::Kind::object:
      break;
  }
  const Held<> object = hold(token.object);
  if (!collecting) {
    runObject(object.get());
  } else if (isBrace(*object)) {
    object->execute(*this);
  } else {
    target.pushChecked(object.get());
  }
  return true;
}

bool Interpreter::isBrace(const PostscriptObject& object) const {
  const auto* name = as<NameObject>(&object);
  return name && (name->name() == openBrace_.text() || name->name() == closeBrace_.text());
}

// The array stays on the execution stack under its elements, as it would after being pushed under
// each of them again. An element may end the array's run, start it anew or delete it, so all is
// looked at again after each.
void Interpreter::runArray(ArrayObject* array) {
  do {
    countTurn();
    const ObjectStack& items = array->items();
    if (array->execIndex >= items.size()) {
      return endArray(array);
    }
    PostscriptObject* element = items.at(array->execIndex++);
    if (!element->executable) {
      operandStack.pushChecked(element);
    } else if (element->runBy == RunBy::name) {
      runName(static_cast<NameObject*>(element)->symbol());
    } else {
      runObject(element);
    }
  } while (executionStack.topIs(array) && array->executable && !suspendFlag);
}

void Interpreter::endArray(ArrayObject* array) {
  const Held<> finished = hold(executionStack.pop());
  if (!array->items().empty()) {
    array->executable = false;
    array->execIndex = 0;
  }
}

inline void Interpreter::runName(Symbol& symbol) {
  PostscriptObject* value = dictionaries.lookup(symbol);
  if (!value) {
    failOnUnknown(symbol);
  }
  if (value->runBy == RunBy::array) {
    makeRunnable(value);
  }
  runObject(value);
}

void Interpreter::failOnUnknown(const Symbol& symbol) {
  throw Ex("NameObject", 25, "NOTHING TO EXECUTE for " + std::string(symbol.text()) + "\n");
}

// An operator may take the object from where it is stored, so it is held while it executes.
inline void Interpreter::runObject(PostscriptObject* object) {
  if (!object->executable) {
    operandStack.pushChecked(object);
  } else if (object->runBy == RunBy::array) {
    executionStack.pushChecked(object);
  } else {
    const Held<> held = hold(object);
    object->execute(*this);
  }
}

void Interpreter::listUnknownNames(const char* bytes, size_t length) {
  abandoned.beginRun();
  parser.setRange(bytes, length);
  std::map<std::string, int32_t> unknown;
  while (const Held<> token = hold(parser.nextToken())) {
    const auto* name = as<NameObject>(token.get());
    if (!name || name->name().size() < 2 || dictionaries.lookup(name->name())) {
      continue;
    }
    const std::string text(name->name());
    const auto isLowerCase = [](char c) { return c >= 'a' && c <= 'z'; };
    if (std::all_of(text.begin(), text.end(), isLowerCase)) {
      ++unknown[text];
    }
  }
  for (const auto& [name, count] : unknown) {
    quillpress::debugOutput((name + " (" + std::to_string(count) + ")\n").c_str());
  }
}

}  // namespace postscript
