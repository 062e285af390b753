#include "tools/quillpress/HelpTexts.h"

namespace quillpress {
namespace {

struct Help {
  std::string_view command;
  std::string_view text;
};

constexpr Help texts[] = {
    {"convert", R"(quillpress convert [options] INPUT [OUTPUT]
quillpress convert [options] --output-dir FOLDER INPUT...

Makes a PDF file of PostScript. INPUT may be compressed by gzip; - is standard
input or output. Without OUTPUT the PDF stands beside INPUT.

  --page-size SIZE     A4, letter, 210mmx297mm, 8.5inx11in, 595x842 (points);
                       otherwise what the file says, or letter
  --matrix a,b,c,d,e,f the page's default coordinate system
  --title, --author, --creator, --subject TEXT
                       in place of what the file's comments say
  --strict             make nothing when something would be missing
  --json FILE          write a report for programs (- for standard output)
  --time-limit S       processor time for a page, 30 seconds; 0 for no limit
  --memory-limit MB    memory in all, 1024 megabytes; 0 for no limit
  --quiet              no progress, and no word when all is well
  --content            write the pages' content text, and no PDF
  --output-dir FOLDER  for several inputs: where the PDF files go

Exit status: 0 the pages are whole, 3 something is missing in the output (it is
told what), 2 nothing was made.
)"},
    {"check", R"(quillpress check [options] INPUT...

Converts without writing, and tells for each file whether it will come out
whole. Takes --page-size, --matrix, --json, --time-limit, --memory-limit and
--quiet as convert does, and ends with the same exit status.
)"},
    {"content", R"(quillpress content [options] INPUT [OUTPUT]

Writes the content text of the pages as the engine gives it, to standard output
when there is no OUTPUT. Options as those of convert.
)"},
    {"objects", R"(quillpress objects --to FOLDER INPUT

Writes the images and patterns that the pages' content text names: for each a
file NAME.dictionary with the entries of its dictionary, and NAME.data.
)"},
    {"operators", R"(quillpress operators [NAME...]

Lists the operators of the language, and what it costs a page that one of them
takes its operands and does nothing.
)"},
    {"name", R"(quillpress name TITLE [--set KEY=VALUE...] [--existing PATH...]

Shows the name that the print front end gives the output of a document with this
title, under these settings and beside files that exist already. Nothing of this
machine is read: the front end runs on a simulated one.

  quillpress name "Editor - Report.doc" --set 'DefaultSaveDir=C:\Out'
)"},
    {"xmp", R"(quillpress xmp TITLE [--set KEY=VALUE...]

Shows the XMP packet that the print front end makes for a document with this
title, under these settings, on a simulated machine.
)"},
    {"", R"(quillpress [COMMAND] [options] INPUT [OUTPUT]

Makes PDF files of PostScript pages: paths, colours, clips, images, masks and
patterns. Text is not painted; what is missing is always told.

  convert     make a PDF file (the command that needs no name)
  check       tell whether files will come out whole, and write nothing
  content     write the content text of the pages
  objects     write the images and patterns that the text names
  operators   list the operators, and which of them do nothing
  name, xmp   what the print front end makes of a document's title

Examples:
  quillpress figure.eps                      makes figure.pdf
  quillpress --page-size A4 report.ps out.pdf
  quillpress check --json report.json *.ps

  quillpress COMMAND --help                  tells the command's options
  quillpress --version

Exit status: 0 the pages are whole, 3 something is missing in the output (it is
told what), 2 nothing was made.
)"}};

}  // namespace

std::string_view helpText(std::string_view command) {
  for (const Help& help : texts) {
    if (help.command == command) {
      return help.text;
    }
  }
  return helpText("");
}

}  // namespace quillpress
