// Report: what became of an input, page by page. Job and PagePress fill it; Summary and JsonReport
// tell it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "postscript/engine/Observer.h"
#include "tools/quillpress/ContentScan.h"
#include "tools/quillpress/ExitStatus.h"
#include "tools/quillpress/Geometry.h"

namespace quillpress {

// An operator that took its operands and did nothing.
struct Loss {
  postscript::OperatorRow row{};
  size_t count = 0;
  size_t line = 0;  // of its first use in the file, from 1
};

// A kind of failure: what went wrong, where it first did, and what to do.
struct Failure {
  std::string cause;   // a word for programs, such as "unknown-name"
  std::string words;   // for the user
  std::string engine;  // the engine's words, for searching; may be empty
  std::string advice;  // may be empty
  size_t line = 0;     // from 1; 0 when it has no place
  size_t column = 0;
  std::string token;
  std::string source;  // the line's text, printable and at most 60 characters of it
  size_t count = 1;
};

constexpr size_t imageDifferences = 4;

// What ran, as the observer saw it: of a page, or of what comes before the first.
struct Events {
  std::vector<Loss> losses;
  std::vector<Failure> failures;
  size_t moreKinds = 0;  // kinds of failure that are not listed
  size_t aftermath = 0;  // failures that followed from those
  std::array<size_t, imageDifferences> differences{};
};

enum class PageStatus {
  whole,    // as far as the engine can tell
  partial,  // something is missing, skipped or different
  blank,    // nothing was painted
  failed    // it is not in the output
};

struct PageReport {
  size_t number = 0;  // over the input's pages, from 1
  std::string label;
  Box box{};
  bool boxIsAssumed = false;  // no comment and no option names a size
  int rotation = 0;
  PageStatus status = PageStatus::whole;
  Marks marks;
  Events events;
  bool byLine = false;               // converted line by line, after a failure
  std::vector<std::string> invalid;  // names of objects that could not be placed
  size_t contentBytes = 0;
  double milliseconds = 0;
};

struct InputReport {
  std::string input;   // as the user named it
  std::string output;  // empty when nothing was to be written
  Events prolog;       // what comes before the first page
  Marks prologMarks;   // dropped, as they have no page
  std::vector<PageReport> pages;
  std::string failure;  // why nothing was made; empty otherwise
};

// The status of a page from what is known of it.
PageStatus statusOf(const PageReport& page);

// Whether the losses are such that a page is not whole.
bool hasLoss(const Events& events);

// 0, 2 or 3: see ExitStatus.
int exitStatusOf(const InputReport& report);

}  // namespace quillpress
