#include "postscript/converter/StartupTexts.h"

namespace postscript {

// -, + and E cannot be reached by these names: the tokenizer reads numbers there.
const char* const startupTexts[3] = {
    "/| /def load def /, /load load | /~ /exch load def /? /ifelse load def /! /pop load def "
    "/` /begin load def /^ /index load def /@ /dup load def /+ /translate load def /$ /roll "
    "load def /U /userdict load def /- /rlineto load def /& /currentdict load def /: /gsave "
    "load def /; /grestore load def /F /false load def /T /true load def /N /newpath load "
    "def /E /end load def /Ac /arc load def /An /arcn load def /A /ashow load def /D "
    "/awidthshow load def /C /closepath load def /O /eofill load def /I /lineto load def /-C "
    "/rcurveto load def /-M /rmoveto load def /+S /scale load def /Ji /setfont load def /Lc "
    "/setlinecap load def /Lj /setlinejoin load def /Lw /setlinewidth load def /S /show load "
    "def /LH /showpage load def /K /stroke load def /W /widthshow load def /b {bind def} "
    "bind def ",

    "/StandardEncoding \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/space /exclam /quotedbl /numbersign /dollar /percent /ampersand /quoteright \n"
    "/parenleft /parenright /asterisk /plus /comma /hyphen /period /slash \n"
    "/zero /one /two /three /four /five /six /seven \n"
    "/eight /nine /colon /semicolon /less /equal /greater /question \n"
    "/at /A /B /C /D /E /F /G \n"
    "/H /I /J /K /L /M /N /O \n"
    "/P /Q /R /S /T /U /V /W \n"
    "/X /Y /Z /bracketleft /backslash /bracketright /asciicircum /underscore \n"
    "/quoteleft /a /b /c /d /e /f /g \n"
    "/h /i /j /k /l /m /n /o \n"
    "/p /q /r /s /t /u /v /w \n"
    "/x /y /z /braceleft /bar /braceright /asciitilde /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /exclamdown /cent /sterling /fraction /yen /florin /section \n"
    "/currency /quotesingle /quotedblleft /guillemotleft /guilsinglleft /guilsinglright /fi "
    "/fl \n"
    "/.notdef /endash /dagger /daggerdbl /periodcentered /.notdef /paragraph /bullet \n"
    "/quotesinglbase /quotedblbase /quotedblright /guillemotright /ellipsis /perthousand "
    "/.notdef /questiondown \n"
    "/.notdef /grave /acute /circumflex /tilde /macron /breve /dotaccent \n"
    "/dieresis /.notdef /ring /cedilla /.notdef /hungarumlaut /ogonek /caron \n"
    "/emdash /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /AE /.notdef /ordfeminine /.notdef /.notdef /.notdef /.notdef \n"
    "/Lslash /Oslash /OE /ordmasculine /.notdef /.notdef /.notdef /.notdef \n"
    "/.notdef /ae /.notdef /.notdef /.notdef /dotlessi /.notdef /.notdef \n"
    "/lslash /oslash /oe /germandbls /.notdef /.notdef /.notdef /.notdef \n"
    "256  array astore def ",

    "/Helvetica 7 dict begin /FontName /Helvetica  def /FontType 1 def /PaintType 0 def "
    "/FontMatrix [0.001 0 0 0.001 0 0] def /Encoding StandardEncoding def /FontBBox {-174 "
    "-285 1028 953} def /UniqueID 15139632 def currentdict end definefont pop ",
};

}  // namespace postscript
