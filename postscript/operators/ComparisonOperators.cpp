#include "postscript/operators/ComparisonOperators.h"

#include <algorithm>
#include <set>
#include <utility>

#include "postscript/engine/Operands.h"
#include "postscript/values/Limits.h"

namespace postscript {

namespace {

constexpr const char* sourceFile = "postscript/lib/ComparisonOperators";

int32_t compareReals(double a, double b) {
  if (b > a) {
    return -1;
  }
  return a > b ? 1 : 0;
}

// The difference wraps: of two integers far apart the lesser may come out as the greater.
int32_t compareNumbers(const NumberOperand& a, const NumberOperand& b) {
  return a.isReal || b.isReal ? compareReals(a.real, b.real)
                              : wrappingSubtract(a.integer, b.integer);
}

int32_t compareTexts(std::string_view a, std::string_view b) {
  const int order = std::string_view(a.data(), std::min(a.find('\0'), a.size()))
                        .compare(std::string_view(b.data(), std::min(b.find('\0'), b.size())));
  return (order > 0) - (order < 0);
}

// Whether two objects are equal by value. Bodies may hold themselves, so the depth is limited, and
// one body many times over, so no pair of bodies is compared twice: a difference would have ended
// the comparison.
class ValueComparison {
 public:
  bool equal(const PostscriptObject& a, const PostscriptObject& b) {
    if (a.type == TypeTag::null || b.type == TypeTag::null) {
      return a.type == b.type;
    }
    const auto* dictionaryA = as<DictionaryObject>(&a);
    const auto* dictionaryB = as<DictionaryObject>(&b);
    if (dictionaryA && dictionaryB) {
      return equalBodies(*dictionaryA, *dictionaryB);
    }
    const auto* arrayA = as<ArrayObject>(&a);
    const auto* arrayB = as<ArrayObject>(&b);
    if (arrayA && arrayB) {
      return equalBodies(*arrayA, *arrayB);
    }
    return Comparer::compare(a, b) == 0;
  }

 private:
  template <class Composite>
  bool equalBodies(const Composite& a, const Composite& b) {
    const std::pair<const CompositeData*, const CompositeData*> bodies(a.data, b.data);
    if (known_.count(bodies)) {
      return true;
    }
    if (++depth_ > limits::nesting) {
      throw Ex(sourceFile, 140, "values are nested too deep to compare");
    }
    if (!equalContents(a, b)) {
      return false;
    }
    --depth_;
    known_.insert(bodies);
    return true;
  }

  bool equalContents(const DictionaryObject& a, const DictionaryObject& b) {
    if (a.body().size() != b.body().size()) {
      return false;
    }
    for (const DictionaryEntry* entry : a.body().entries()) {
      const PostscriptObject* other = b.body().get(entry->symbol);
      if (!other || !equal(*entry->value, *other)) {
        return false;
      }
    }
    return true;
  }

  bool equalContents(const ArrayObject& a, const ArrayObject& b) {
    if (a.items().size() != b.items().size()) {
      return false;
    }
    for (int32_t i = 0; i < a.items().size(); ++i) {
      if (!equal(*a.items().at(i), *b.items().at(i))) {
        return false;
      }
    }
    return true;
  }

  std::set<std::pair<const CompositeData*, const CompositeData*>> known_;
  int depth_ = 0;
};

}  // namespace

int32_t Comparer::compare(const PostscriptObject& a, const PostscriptObject& b) {
  const auto* integerA = as<IntegerObject>(&a);
  const auto* integerB = as<IntegerObject>(&b);
  const auto* realA = as<RealObject>(&a);
  const auto* realB = as<RealObject>(&b);
  if (integerA && integerB) {
    return wrappingSubtract(integerA->value, integerB->value);
  }
  if ((integerA || realA) && (integerB || realB)) {
    return compareReals(numberValue(a), numberValue(b));
  }
  const auto* stringA = as<StringObject>(&a);
  const auto* stringB = as<StringObject>(&b);
  if (stringA && stringB) {
    return compareTexts(stringA->text(), stringB->text());
  }
  const auto* nameA = as<NameObject>(&a);
  const auto* nameB = as<NameObject>(&b);
  if (nameA && nameB) {
    return compareTexts(nameA->name(), nameB->name());
  }
  const auto* booleanA = as<BooleanObject>(&a);
  const auto* booleanB = as<BooleanObject>(&b);
  if (booleanA && booleanB) {
    return int32_t{booleanA->value} - int32_t{booleanB->value};
  }
  // The integer comes first in both: the order does not follow the operands.
  if (integerA && booleanB) {
    return wrappingSubtract(integerA->value, booleanB->value);
  }
  if (booleanA && integerB) {
    return wrappingSubtract(integerB->value, booleanA->value);
  }
  throw Ex(sourceFile, 72, "Unsupported type comparison");
}

int32_t Comparer::comparePopped(Interpreter& ps) {
  NumberOperand numberA;
  NumberOperand numberB;
  if (twoNumbers(ps, numberA, numberB)) {
    ps.operandStack.drop(2);
    return compareNumbers(numberA, numberB);
  }
  const Held<> b = popObject(ps);
  const Held<> a = popObject(ps);
  return compare(*a, *b);
}

bool Comparer::equal(Interpreter& ps) {
  NumberOperand numberA;
  NumberOperand numberB;
  if (twoNumbers(ps, numberA, numberB)) {
    ps.operandStack.drop(2);
    return compareNumbers(numberA, numberB) == 0;
  }
  const Held<> b = popObject(ps);
  const Held<> a = popObject(ps);
  return ValueComparison().equal(*a, *b);
}

void GeOperator::execute(Interpreter& ps) {
  pushBoolean(ps, comparePopped(ps) >= 0);
}
void GtOperator::execute(Interpreter& ps) {
  pushBoolean(ps, comparePopped(ps) > 0);
}
void LeOperator::execute(Interpreter& ps) {
  pushBoolean(ps, comparePopped(ps) < 1);
}
void LtOperator::execute(Interpreter& ps) {
  pushBoolean(ps, comparePopped(ps) < 0);
}
void EqOperator::execute(Interpreter& ps) {
  pushBoolean(ps, equal(ps));
}
void NeOperator::execute(Interpreter& ps) {
  pushBoolean(ps, !equal(ps));
}

void addComparisonOperators(OperatorRegistry& registry) {
  registry.add<GeOperator>();
  registry.add<GtOperator>();
  registry.add<EqOperator>();
  registry.add<NeOperator>();
  registry.add<LtOperator>();
  registry.add<LeOperator>();
}

}  // namespace postscript
