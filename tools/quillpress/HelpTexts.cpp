#include "tools/quillpress/HelpTexts.h"

namespace quillpress {
namespace {

struct Help {
  std::string_view command;
  std::string_view text;
};

// scripts/describe-program makes the manual page of these: an opening line, the usage, and headings
// with entries below them.
constexpr Help texts[] = {
    {"convert", R"(Makes a PDF file of PostScript.
Usage: quillpress convert [options] INPUT [OUTPUT]

INPUT may be compressed by gzip; - is standard input or output. Without OUTPUT
the PDF file is named after INPUT and lies beside it.

Options:
  --output-dir FOLDER  where the PDF files of several inputs go
  --page-size SIZE     A4, letter, 210mmx297mm, 8.5inx11in, 595x842 (points);
                       otherwise what the file says, or letter
  --matrix a,b,c,d,e,f  the page's default coordinate system
  --title TEXT         in place of what the file's comments say
  --author TEXT        the same
  --creator TEXT       the same
  --subject TEXT       the same
  --strict             make nothing when something would be missing
  --json FILE          write a report for programs; - is standard output
  --time-limit S       processor time for a page, 30 seconds; 0 for no limit
  --memory-limit MB    memory in all, 1024 megabytes; 0 for no limit
  --quiet              no progress, and no word when all is well
  --content            write the pages' content text, and no PDF file

Exit status: 0 the pages are whole, 3 something is missing in the output (the
messages say what), 2 nothing was made.
)"},
    {"check", R"(Tells whether files will come out whole, and writes nothing.
Usage: quillpress check [options] INPUT...

The exit status is the one that convert would end with.

Options:
  --page-size SIZE     as for convert
  --matrix a,b,c,d,e,f  as for convert
  --json FILE          write a report for programs; - is standard output
  --time-limit S       processor time for a page, 30 seconds; 0 for no limit
  --memory-limit MB    memory in all, 1024 megabytes; 0 for no limit
  --quiet              no progress
)"},
    {"content", R"(Writes the content text of the pages as the engine gives it.
Usage: quillpress content [options] INPUT [OUTPUT]

Without OUTPUT it goes to standard output.

Options:
  --matrix a,b,c,d,e,f  the page's default coordinate system
  --json FILE          write a report for programs; - is standard output
  --time-limit S       processor time for a page, 30 seconds; 0 for no limit
  --memory-limit MB    memory in all, 1024 megabytes; 0 for no limit
  --quiet              no progress, and no word when all is well
)"},
    {"objects", R"(Writes the images and patterns that the pages' content text names.
Usage: quillpress objects --to FOLDER INPUT

Each is a file NAME.dictionary, with the entries of its dictionary, and a file
NAME.data.

Options:
  --to FOLDER          where they go; it is made when it is not there
  --matrix a,b,c,d,e,f  the page's default coordinate system
)"},
    {"operators", R"(Lists the operators, and what it costs that one of them does nothing.
Usage: quillpress operators [NAME...]
)"},
    {"name", R"(Shows what the print front end names the output of a document.
Usage: quillpress name TITLE [--set KEY=VALUE...] [--existing PATH...]

The front end runs on a simulated machine: nothing of this one is read.

Options:
  --set KEY=VALUE      a setting of the printer, such as DefaultSaveDir=C:\Out
  --existing PATH      a file that exists already
)"},
    {"xmp", R"(Shows the XMP packet that the print front end makes for a document.
Usage: quillpress xmp TITLE [--set KEY=VALUE...]

Options:
  --set KEY=VALUE      a setting of the printer
)"},
    {"", R"(Makes PDF files of PostScript pages.
Usage: quillpress [SUBCOMMAND] [options] INPUT [OUTPUT]

Paths, colours, clips, images, masks and patterns are painted. Text is not; what
is missing is always said.

Subcommands:
  convert              make a PDF file; needs no name
  check                tell whether files will come out whole, and write nothing
  content              write the content text of the pages
  objects              write the images and patterns that the text names
  operators            list the operators, and which of them do nothing
  name                 what the print front end names a document's output
  xmp                  the XMP packet that it makes for a document

Options:
  --help               with a subcommand in front, tell its options
  --version            tell the version

Examples:
  quillpress figure.eps
                       makes figure.pdf
  quillpress --page-size A4 report.ps out.pdf
                       on paper of another size
  quillpress check --json report.json *.ps
                       what will be missing, for people and for programs

Exit status: 0 the pages are whole, 3 something is missing in the output (the
messages say what), 2 nothing was made.
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
