#include "postscript/lib/CoreLayer.h"

#include "postscript/lib/ArrayOperators.h"
#include "postscript/lib/BeginOperator.h"
#include "postscript/lib/ComparisonOperators.h"
#include "postscript/lib/ConvertOperators.h"
#include "postscript/lib/DictionaryStack.h"
#include "postscript/lib/ExecOperators.h"
#include "postscript/lib/FileOperators.h"
#include "postscript/lib/IfOperators.h"
#include "postscript/lib/LengthOperators.h"
#include "postscript/lib/LoopOperators.h"
#include "postscript/lib/MathOperators.h"
#include "postscript/lib/MatrixOperators.h"
#include "postscript/lib/OutputOperators.h"
#include "postscript/lib/PutOperator.h"
#include "postscript/lib/StackOperators.h"
#include "postscript/lib/StopOperators.h"
#include "postscript/lib/SystemOperators.h"
#include "postscript/lib/WhereOperator.h"

namespace postscript {

namespace {

template <class Operator, class... Arguments>
void add(DictionaryStack& dictionaries, Arguments... arguments) {
  dictionaries.addOperator(std::make_unique<Operator>(arguments...));
}

}  // namespace

void registerCoreLayer(DictionaryStack& dictionaries) {
  add<BeginProcedureOperator>(dictionaries);
  add<EndProcedureOperator>(dictionaries);
  add<MarkOperator>(dictionaries, "[");
  add<EndArrayOperator>(dictionaries);
  add<MarkOperator>(dictionaries, "mark");
  add<CleartomarkOperator>(dictionaries);
  add<CounttomarkOperator>(dictionaries);
  add<WhereOperator>(dictionaries);
  add<KnownOperator>(dictionaries);
  add<IfelseOperator>(dictionaries);
  add<IfOperator>(dictionaries);
  add<TrueOperator>(dictionaries);
  add<FalseOperator>(dictionaries);
  add<NullOperator>(dictionaries);
  add<NotOperator>(dictionaries);
  add<AndOperator>(dictionaries);
  add<OrOperator>(dictionaries);
  add<XorOperator>(dictionaries);
  add<PopOperator>(dictionaries);
  add<GeOperator>(dictionaries);
  add<GtOperator>(dictionaries);
  add<EqOperator>(dictionaries);
  add<NeOperator>(dictionaries);
  add<LtOperator>(dictionaries);
  add<LeOperator>(dictionaries);
  add<DupOperator>(dictionaries);
  add<PutOperator>(dictionaries);
  add<GetOperator>(dictionaries);
  add<StoreOperator>(dictionaries);
  add<DictOperator>(dictionaries);
  add<UndefOperator>(dictionaries);
  add<CurrentdictOperator>(dictionaries);
  add<BeginOperator>(dictionaries);
  add<DefOperator>(dictionaries);
  add<ForOperator>(dictionaries);
  add<ForallOperator>(dictionaries);
  add<LoopOperator>(dictionaries);
  add<RepeatOperator>(dictionaries);
  add<ExitOperator>(dictionaries);
  add<EndOperator>(dictionaries);
  add<SubOperator>(dictionaries);
  add<AddOperator>(dictionaries);
  add<MulOperator>(dictionaries);
  add<DivOperator>(dictionaries);
  add<IdivOperator>(dictionaries);
  add<CosOperator>(dictionaries);
  add<SinOperator>(dictionaries);
  add<AtanOperator>(dictionaries);
  add<SqrtOperator>(dictionaries);
  add<NegOperator>(dictionaries);
  add<AbsOperator>(dictionaries);
  add<ModOperator>(dictionaries);
  add<BindOperator>(dictionaries);
  add<MatrixOperator>(dictionaries);
  add<IdentmatrixOperator>(dictionaries);
  add<ConcatmatrixOperator>(dictionaries);
  add<ClearOperator>(dictionaries);
  add<CountOperator>(dictionaries);
  add<CleardictstackOperator>(dictionaries);
  add<ExchOperator>(dictionaries);
  add<RollOperator>(dictionaries);
  add<IndexOperator>(dictionaries);
  add<LoadOperator>(dictionaries);
  add<CurrentfileOperator>(dictionaries);
  add<ReadOperator>(dictionaries);
  add<ReadlineOperator>(dictionaries);
  add<ReadhexstringOperator>(dictionaries);
  add<CurrentglobalOperator>(dictionaries);
  add<SetglobalOperator>(dictionaries);
  add<FilterOperator>(dictionaries);
  add<StringOperator>(dictionaries);
  add<ReadstringOperator>(dictionaries);
  add<StoppedOperator>(dictionaries);
  add<StopOperator>(dictionaries);
  add<ExecOperator>(dictionaries);
  add<CvxOperator>(dictionaries);
  add<XcheckOperator>(dictionaries);
  add<ArrayOperator>(dictionaries);
  add<PackedarrayOperator>(dictionaries);
  add<SetpackingOperator>(dictionaries);
  add<CurrentpackingOperator>(dictionaries);
  add<FloorOperator>(dictionaries);
  add<CeilingOperator>(dictionaries);
  add<RoundOperator>(dictionaries);
  add<CopyOperator>(dictionaries);
  add<ReadonlyOperator>(dictionaries);
  add<AloadOperator>(dictionaries);
  add<AstoreOperator>(dictionaries);
  add<TypeOperator>(dictionaries);
  add<CvrOperator>(dictionaries);
  add<CviOperator>(dictionaries);
  add<CvnOperator>(dictionaries);
  add<CvsOperator>(dictionaries);
  add<LengthOperator>(dictionaries);
  add<MaxlengthOperator>(dictionaries);
  add<PutintervalOperator>(dictionaries);
  add<GetintervalOperator>(dictionaries);
  add<StackOperator>(dictionaries);
  add<PrintValueOperator>(dictionaries);
  add<PrintSyntaxOperator>(dictionaries);
  add<VmstatusOperator>(dictionaries);
  add<StatusdictOperator>(dictionaries);
  add<DefinefontOperator>(dictionaries);
  add<ResourcestatusOperator>(dictionaries);
  add<AnchorsearchOperator>(dictionaries);
}

}  // namespace postscript
