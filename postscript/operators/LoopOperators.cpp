#include "postscript/operators/LoopOperators.h"

#include <algorithm>
#include <array>

#include "postscript/engine/Operands.h"
#include "postscript/operators/ComparisonOperators.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/LoopOperators";

// What a continuation takes with the numbers that it holds.
constexpr size_t bytesOfContinuation = 400;

void letGo(PostscriptObject* object) {
  if (!object) {
    return;
  }
  --object->holders;
  release(object);
}

// The control variable of a for: a real as soon as one of its numbers is real.
Held<> controlOf(Interpreter& ps, const PostscriptObject& initial, bool anyReal) {
  const auto* integer = as<IntegerObject>(&initial);
  if (!anyReal || initial.type == TypeTag::real) {
    return ps.hold(initial.clone());
  }
  if (integer) {
    return ps.hold<PostscriptObject>(new RealObject(integer->value));
  }
  throw Ex(sourceFile, 36, "Unsupported number type in initial for loop value");
}

void pushCloneOfNumber(Interpreter& ps, const PostscriptObject& number) {
  if (const auto* integer = as<IntegerObject>(&number)) {
    pushInteger(ps, integer->value);
  } else {
    ps.operandStack.pushChecked(ps.hold(number.clone()).get());
  }
}

bool goesUp(const PostscriptObject& increment) {
  if (const auto* integer = as<IntegerObject>(&increment)) {
    return integer->value >= 0;
  }
  if (const auto* real = as<RealObject>(&increment)) {
    return real->value >= 0.0;
  }
  throw Ex(sourceFile, 50, "Unsupported increment type in for loop");
}

}  // namespace

RunningProcedure::RunningProcedure(Interpreter& ps, PostscriptObject* procedure)
    : object_(procedure), share_(&ps.memory.budget, bytesOfContinuation) {
  ++object_->refCount;
}

RunningProcedure::~RunningProcedure() {
  if (!object_) {
    return;
  }
  makeLiteral(object_);
  giveUp(object_);
}

ForOperator::ForOperator(Interpreter& ps, PostscriptObject* theControl, PostscriptObject* theProc,
                         PostscriptObject* theLimit, PostscriptObject* theIncrement,
                         PostscriptObject* theInitial)
    : NameObject("for"),
      control(theControl),
      proc(ps, theProc),
      limit(theLimit),
      increment(theIncrement),
      initial(theInitial) {
  ++control->refCount;
  ++limit->holders;
  ++increment->holders;
  ++initial->holders;
}

ForOperator::~ForOperator() {
  if (control) {
    giveUp(control);
  }
  letGo(limit);
  letGo(increment);
  letGo(initial);
}

void ForOperator::execute(Interpreter& ps) {
  if (!control) {
    return begin(ps);
  }
  addIncrement();
  round(ps);
}

void ForOperator::begin(Interpreter& ps) {
  const Held<> proc = popObject(ps);
  const Held<> limit = popObject(ps);
  const Held<> increment = popObject(ps);
  const Held<> initial = popObject(ps);
  const bool anyReal = limit->type == TypeTag::real || increment->type == TypeTag::real ||
                       initial->type == TypeTag::real;
  const Held<> control = controlOf(ps, *initial, anyReal);
  const Held<ForOperator> loop = ps.hold(
      new ForOperator(ps, control.get(), proc.get(), limit.get(), increment.get(), initial.get()));
  // A failure here leaves the counts that the loop has taken.
  loop->up = goesUp(*increment);
  loop->round(ps);
}

// On the continuation's own clone: what the program saw of earlier rounds stays as it was.
void ForOperator::addIncrement() {
  if (auto* real = as<RealObject>(control)) {
    real->add(*increment);
  } else if (auto* integer = as<IntegerObject>(control)) {
    integer->add(*increment);
  } else {
    // No Ex, on purpose: the call fails without a text.
    throw static_cast<const char*>("Unsupported type in addXtoY");
  }
}

void ForOperator::round(Interpreter& ps) {
  const int32_t order = Comparer::compare(*control, *limit);
  if (up ? order >= 0 : order <= 0) {
    return;
  }
  ps.executionStack.pushChecked(this);
  ps.executionStack.pushChecked(proc.get());
  pushCloneOfNumber(ps, *control);
  makeRunnable(proc.get());
}

ForallOperator::ForallOperator(Interpreter& ps, PostscriptObject* theProc,
                               PostscriptObject* theCollection)
    : NameObject("forall"), proc(ps, theProc), collection(theCollection) {
  ++collection->refCount;
}

ForallOperator::~ForallOperator() {
  if (collection) {
    giveUp(collection);
  }
}

void ForallOperator::execute(Interpreter& ps) {
  if (proc) {
    return step(ps);
  }
  const Held<> procedure = popObject(ps);
  const Held<> elements = popObject(ps);
  ps.hold(new ForallOperator(ps, procedure.get(), elements.get()))->step(ps);
}

void ForallOperator::step(Interpreter& ps) {
  if (const auto* array = as<ArrayObject>(collection)) {
    if (PostscriptObject* element = array->items().at(index)) {
      step(ps, nullptr, element);
    }
  } else if (as<DictionaryObject>(collection)) {
    stepDictionary(ps);
  } else if (const auto* string = as<StringObject>(collection)) {
    const auto at = static_cast<size_t>(index);
    if (at >= string->text().size()) {
      return;
    }
    step(ps, nullptr, ps.hold(new IntegerObject(signedByte(string->text()[at]))).get());
  } else {
    throw Ex(sourceFile, 203, "Unsupported forall elements param");
  }
}

// By position, also when the body has changed the dictionary: entries may be met twice or never.
void ForallOperator::stepDictionary(Interpreter& ps) {
  const DictionaryData& body = as<DictionaryObject>(collection)->body();
  if (index >= body.size()) {
    return;
  }
  const DictionaryEntry& entry = body.entryAt(index);
  step(ps, ps.hold(new NameObject(entry.symbol)).get(), entry.value);
}

void ForallOperator::step(Interpreter& ps, PostscriptObject* key, PostscriptObject* element) {
  ps.executionStack.pushChecked(this);
  start(ps, proc.get());
  if (key) {
    ps.operandStack.pushChecked(key);
  }
  ps.operandStack.pushChecked(element);
  ++index;
}

LoopOperator::LoopOperator(Interpreter& ps, PostscriptObject* theProc)
    : NameObject("loop"), proc(ps, theProc) {}

LoopOperator::~LoopOperator() = default;

void LoopOperator::execute(Interpreter& ps) {
  if (!proc) {
    const Held<> procedure = popObject(ps);
    return ps.hold(new LoopOperator(ps, procedure.get()))->execute(ps);
  }
  ps.executionStack.pushChecked(this);
  start(ps, proc.get());
}

RepeatOperator::RepeatOperator(Interpreter& ps, PostscriptObject* theProc, int32_t theRemaining)
    : NameObject("repeat"), proc(ps, theProc), remaining(theRemaining) {}

RepeatOperator::~RepeatOperator() = default;

void RepeatOperator::execute(Interpreter& ps) {
  if (!proc) {
    const Held<> procedure = popObject(ps);
    const int32_t count = popInteger(ps, "repeat");
    return ps.hold(new RepeatOperator(ps, procedure.get(), count))->execute(ps);
  }
  if (remaining < 1) {
    return;
  }
  ps.executionStack.pushChecked(this);
  start(ps, proc.get());
  --remaining;
}

void ExitOperator::execute(Interpreter& ps) {
  constexpr std::array<std::string_view, 9> loops = {
      "cshow",  "forall", "pathforall", "filenameforall", "kshow",
      "repeat", "for",    "loop",       "resourceforall"};
  // Outside of a loop the stack runs empty, and the pop fails.
  for (;;) {
    const Held<> object = ps.hold(ps.executionStack.pop());
    const auto* loop = as<NameObject>(object.get());
    if (loop && std::find(loops.begin(), loops.end(), loop->name()) != loops.end()) {
      return;
    }
    makeLiteral(object.get());
  }
}

void addLoopOperators(OperatorRegistry& registry) {
  registry.add<ForOperator>();
  registry.add<ForallOperator>();
  registry.add<LoopOperator>();
  registry.add<RepeatOperator>();
  registry.add<ExitOperator>();
}

}  // namespace postscript
