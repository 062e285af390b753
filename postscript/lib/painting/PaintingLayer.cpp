#include "postscript/lib/painting/PaintingLayer.h"

#include "postscript/lib/DictionaryStack.h"
#include "postscript/lib/painting/ArcOperators.h"
#include "postscript/lib/painting/ColorOperators.h"
#include "postscript/lib/painting/CoordinateOperators.h"
#include "postscript/lib/painting/DeviceOperators.h"
#include "postscript/lib/painting/FontOperators.h"
#include "postscript/lib/painting/ImageOperators.h"
#include "postscript/lib/painting/LineOperators.h"
#include "postscript/lib/painting/MaskOperators.h"
#include "postscript/lib/painting/PathOperators.h"
#include "postscript/lib/painting/PatternOperators.h"
#include "postscript/lib/painting/StateOperators.h"

namespace postscript {

namespace {

template <class Operator>
void add(DictionaryStack& dictionaries, Postscript2Pdf* converter) {
  dictionaries.addOperator(std::make_unique<Operator>(converter));
}

}  // namespace

void registerPaintingLayer(DictionaryStack& dictionaries, Postscript2Pdf* converter) {
  add<SetscreenOperator>(dictionaries, converter);
  add<SetcolorscreenOperator>(dictionaries, converter);
  add<SethalftoneOperator>(dictionaries, converter);
  add<CurrenthalftoneOperator>(dictionaries, converter);
  add<GsaveOperator>(dictionaries, converter);
  add<InitclipOperator>(dictionaries, converter);
  add<EoclipOperator>(dictionaries, converter);
  add<ClipOperator>(dictionaries, converter);
  add<ClippathOperator>(dictionaries, converter);
  add<RectclipOperator>(dictionaries, converter);
  add<SetrgbcolorOperator>(dictionaries, converter);
  add<SethsbcolorOperator>(dictionaries, converter);
  add<SetcmykcolorOperator>(dictionaries, converter);
  add<SetgrayOperator>(dictionaries, converter);
  add<CurrentrgbcolorOperator>(dictionaries, converter);
  add<CurrenthsbcolorOperator>(dictionaries, converter);
  add<CurrentcmykcolorOperator>(dictionaries, converter);
  add<CurrentgrayOperator>(dictionaries, converter);
  add<StrokeOperator>(dictionaries, converter);
  add<NewpathOperator>(dictionaries, converter);
  add<FillOperator>(dictionaries, converter);
  add<EofillOperator>(dictionaries, converter);
  add<MovetoOperator>(dictionaries, converter);
  add<RmovetoOperator>(dictionaries, converter);
  add<LinetoOperator>(dictionaries, converter);
  add<RlinetoOperator>(dictionaries, converter);
  add<CurvetoOperator>(dictionaries, converter);
  add<RcurvetoOperator>(dictionaries, converter);
  add<ArcOperator>(dictionaries, converter);
  add<ArcnOperator>(dictionaries, converter);
  add<ArctOperator>(dictionaries, converter);
  add<ArctoOperator>(dictionaries, converter);
  add<CurrentpointOperator>(dictionaries, converter);
  add<ClosepathOperator>(dictionaries, converter);
  add<TranslateOperator>(dictionaries, converter);
  add<TransformOperator>(dictionaries, converter);
  add<ItransformOperator>(dictionaries, converter);
  add<IdtransformOperator>(dictionaries, converter);
  add<DtransformOperator>(dictionaries, converter);
  add<RotateOperator>(dictionaries, converter);
  add<ConcatOperator>(dictionaries, converter);
  add<CurrentmatrixOperator>(dictionaries, converter);
  add<ScaleOperator>(dictionaries, converter);
  add<GrestoreOperator>(dictionaries, converter);
  add<FindfontOperator>(dictionaries, converter);
  add<ScalefontOperator>(dictionaries, converter);
  add<SetfontOperator>(dictionaries, converter);
  add<FontDirectoryOperator>(dictionaries, converter);
  add<GlobalFontDirectoryOperator>(dictionaries, converter);
  add<ShowOperator>(dictionaries, converter);
  add<StringwidthOperator>(dictionaries, converter);
  add<SetlinewidthOperator>(dictionaries, converter);
  add<SetlinecapOperator>(dictionaries, converter);
  add<SetlinejoinOperator>(dictionaries, converter);
  add<SetmiterlimitOperator>(dictionaries, converter);
  add<SetdashOperator>(dictionaries, converter);
  add<CurrentlinewidthOperator>(dictionaries, converter);
  add<SetstrokeadjustOperator>(dictionaries, converter);
  add<CurrentstrokeadjustOperator>(dictionaries, converter);
  add<SetmatrixOperator>(dictionaries, converter);
  add<DefaultmatrixOperator>(dictionaries, converter);
  add<ShowpageOperator>(dictionaries, converter);
  add<ImagemaskOperator>(dictionaries, converter);
  add<SettransferOperator>(dictionaries, converter);
  add<CurrenttransferOperator>(dictionaries, converter);
  add<SetcolortransferOperator>(dictionaries, converter);
  add<CurrentcolortransferOperator>(dictionaries, converter);
  add<SetflatOperator>(dictionaries, converter);
  add<CurrentflatOperator>(dictionaries, converter);
  add<ColorimageOperator>(dictionaries, converter);
  add<ImageOperator>(dictionaries, converter);
  add<SetoverprintOperator>(dictionaries, converter);
  add<CurrentoverprintOperator>(dictionaries, converter);
  add<SaveOperator>(dictionaries, converter);
  add<RestoreOperator>(dictionaries, converter);
  add<MakepatternOperator>(dictionaries, converter);
  add<SetpatternOperator>(dictionaries, converter);
  add<CurrentfontOperator>(dictionaries, converter);
  add<PrintOperator>(dictionaries, converter);
  add<SetcolorspaceOperator>(dictionaries, converter);
}

}  // namespace postscript
