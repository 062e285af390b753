// The one place that knows every family of operators. A family of its own is added here; an
// operator of an existing family registers in the family's own file.
#include "postscript/converter/Layers.h"

#include <array>
#include <string_view>

#include "postscript/engine/Interpreter.h"
#include "postscript/engine/OperatorRegistry.h"
#include "postscript/generated/GeneratedLayer.h"
#include "postscript/generated/ImplementedGenOps.h"
#include "postscript/operators/ArrayOperators.h"
#include "postscript/operators/ComparisonOperators.h"
#include "postscript/operators/ConvertOperators.h"
#include "postscript/operators/DictionaryOperators.h"
#include "postscript/operators/ElementOperators.h"
#include "postscript/operators/ExecOperators.h"
#include "postscript/operators/FileOperators.h"
#include "postscript/operators/LogicOperators.h"
#include "postscript/operators/LoopOperators.h"
#include "postscript/operators/MathOperators.h"
#include "postscript/operators/MatrixOperators.h"
#include "postscript/operators/OutputOperators.h"
#include "postscript/operators/StackOperators.h"
#include "postscript/operators/StopOperators.h"
#include "postscript/operators/SystemOperators.h"
#include "postscript/operators/TextOperators.h"
#include "postscript/operators/WhereOperators.h"
#include "postscript/painting/ArcOperators.h"
#include "postscript/painting/ColorOperators.h"
#include "postscript/painting/CoordinateOperators.h"
#include "postscript/painting/DeviceOperators.h"
#include "postscript/painting/FontOperators.h"
#include "postscript/painting/ImageOperators.h"
#include "postscript/painting/LineOperators.h"
#include "postscript/painting/MaskOperators.h"
#include "postscript/painting/PathOperators.h"
#include "postscript/painting/PatternOperators.h"
#include "postscript/painting/StateOperators.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/StringObject.h"

namespace postscript {

namespace {

// The order in which the layers define their operators since the first release. Operators that are
// not listed follow the listed ones.
constexpr auto coreOrder = std::to_array<std::string_view>({
    "{",
    "}",
    "[",
    "]",
    "mark",
    "cleartomark",
    "counttomark",
    "where",
    "known",
    "ifelse",
    "if",
    "true",
    "false",
    "null",
    "not",
    "and",
    "or",
    "xor",
    "pop",
    "ge",
    "gt",
    "eq",
    "ne",
    "lt",
    "le",
    "dup",
    "put",
    "get",
    "store",
    "dict",
    "undef",
    "currentdict",
    "begin",
    "def",
    "for",
    "forall",
    "loop",
    "repeat",
    "exit",
    "end",
    "sub",
    "add",
    "mul",
    "div",
    "idiv",
    "cos",
    "sin",
    "atan",
    "sqrt",
    "neg",
    "abs",
    "mod",
    "bind",
    "matrix",
    "identmatrix",
    "concatmatrix",
    "clear",
    "count",
    "cleardictstack",
    "exch",
    "roll",
    "index",
    "load",
    "currentfile",
    "read",
    "readline",
    "readhexstring",
    "currentglobal",
    "setglobal",
    "filter",
    "string",
    "readstring",
    "stopped",
    "stop",
    "exec",
    "cvx",
    "xcheck",
    "array",
    "packedarray",
    "setpacking",
    "currentpacking",
    "floor",
    "ceiling",
    "round",
    "copy",
    "readonly",
    "aload",
    "astore",
    "type",
    "cvr",
    "cvi",
    "cvn",
    "cvs",
    "length",
    "maxlength",
    "putinterval",
    "getinterval",
    "stack",
    "=",
    "==",
    "vmstatus",
    "statusdict",
    "definefont",
    "resourcestatus",
    "anchorsearch",
});
constexpr auto paintingOrder = std::to_array<std::string_view>({
    "setscreen",
    "setcolorscreen",
    "sethalftone",
    "currenthalftone",
    "gsave",
    "initclip",
    "eoclip",
    "clip",
    "clippath",
    "rectclip",
    "setrgbcolor",
    "sethsbcolor",
    "setcmykcolor",
    "setgray",
    "currentrgbcolor",
    "currenthsbcolor",
    "currentcmykcolor",
    "currentgray",
    "stroke",
    "newpath",
    "fill",
    "eofill",
    "moveto",
    "rmoveto",
    "lineto",
    "rlineto",
    "curveto",
    "rcurveto",
    "arc",
    "arcn",
    "arct",
    "arcto",
    "currentpoint",
    "closepath",
    "translate",
    "transform",
    "itransform",
    "idtransform",
    "dtransform",
    "rotate",
    "concat",
    "currentmatrix",
    "scale",
    "grestore",
    "findfont",
    "scalefont",
    "setfont",
    "FontDirectory",
    "GlobalFontDirectory",
    "show",
    "stringwidth",
    "setlinewidth",
    "setlinecap",
    "setlinejoin",
    "setmiterlimit",
    "setdash",
    "currentlinewidth",
    "setstrokeadjust",
    "currentstrokeadjust",
    "setmatrix",
    "defaultmatrix",
    "showpage",
    "imagemask",
    "settransfer",
    "currenttransfer",
    "setcolortransfer",
    "currentcolortransfer",
    "setflat",
    "currentflat",
    "colorimage",
    "image",
    "setoverprint",
    "currentoverprint",
    "save",
    "restore",
    "makepattern",
    "setpattern",
    "currentfont",
    "print",
    "setcolorspace",
});

}  // namespace

void installGeneratedLayer(Interpreter& ps) {
  ps.generatedOps = std::make_shared<ImplementedGenOps>(ps);
  registerGeneratedLayer(ps.dictionaries);
}

void installCoreLayer(Interpreter& ps) {
  OperatorRegistry registry;
  addArrayOperators(registry);
  addComparisonOperators(registry);
  addConvertOperators(registry);
  addDictionaryOperators(registry);
  addElementOperators(registry);
  addExecOperators(registry);
  addFileOperators(registry, ps.memory.budget);
  addLogicOperators(registry);
  addLoopOperators(registry);
  addMathOperators(registry);
  addMatrixOperators(registry);
  addOutputOperators(registry);
  addStackOperators(registry);
  addStopOperators(registry);
  addSystemOperators(registry);
  addTextOperators(registry);
  addWhereOperators(registry);
  registry.defineAll(ps.dictionaries, coreOrder);
}

void installLanguage(Interpreter& ps) {
  installGeneratedLayer(ps);
  installCoreLayer(ps);
  DictionaryObject& system = *ps.dictionaries.systemDictionary;
  system.body().put("systemdict", ps.dictionaries.systemDictionary);
  system.body().put("globaldict", ps.dictionaries.globalDictionary);
  system.body().put("userdict", ps.dictionaries.userDictionary);
  system.body().put("errordict", ps.dictionaries.errorDictionary);
  system.putNew<IntegerObject>("languagelevel", 2);
  system.putNew<StringObject>("version", *ps.memory.current, "49");
}

void installPaintingLayer(Interpreter& ps, Postscript2Pdf* converter) {
  OperatorRegistry registry;
  addArcOperators(registry, converter);
  addColorOperators(registry, converter);
  addCoordinateOperators(registry, converter);
  addDeviceOperators(registry, converter);
  addFontOperators(registry, converter);
  addImageOperators(registry, converter);
  addLineOperators(registry, converter);
  addMaskOperators(registry, converter);
  addPathOperators(registry, converter);
  addPatternOperators(registry, converter);
  addStateOperators(registry, converter);
  registry.defineAll(ps.dictionaries, paintingOrder);
}

}  // namespace postscript
