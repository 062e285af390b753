// The first word that is no option names the command; when it names none, it is a file to convert.
#include "tools/quillpress/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>

#include "tools/quillpress/ExitStatus.h"
#include "tools/quillpress/Files.h"
#include "tools/quillpress/HelpTexts.h"
#include "tools/quillpress/PaperSize.h"
#include "tools/quillpress/system/System.h"

namespace quillpress {
namespace {

namespace fs = std::filesystem;

constexpr std::pair<const char*, Command> commands[] = {
    {"convert", Command::convert}, {"check", Command::check},         {"content", Command::content},
    {"objects", Command::objects}, {"operators", Command::operators}, {"name", Command::name},
    {"xmp", Command::xmp}};

// A command line that makes no sense, and why.
class UsageFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A number in plain decimal notation, in the range of the engine's 32-bit floats.
std::optional<double> parseNumber(std::string_view text) {
  float number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || rest != text.data() + text.size() || !std::isfinite(number)) {
    return std::nullopt;
  }
  return number;
}

Matrix parseMatrix(std::string_view text) {
  const UsageFailure wrong(
      "--matrix: give six numbers a,b,c,d,e,f of which a*d - b*c is not 0, not " +
      std::string(text));
  Matrix matrix{};
  for (size_t i = 0; i < matrix.size(); ++i) {
    const size_t comma = text.find(',');
    const auto number = parseNumber(text.substr(0, comma));
    if (!number || (comma == std::string_view::npos) != (i + 1 == matrix.size())) {
      throw wrong;
    }
    matrix[i] = *number;
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  if (matrix[0] * matrix[3] - matrix[1] * matrix[2] == 0) {
    throw wrong;
  }
  return matrix;
}

Box parsePageSize(const std::string& text) {
  if (const auto box = parsePaper(text)) {
    return *box;
  }
  throw UsageFailure("--page-size: give a name (" + std::string(paperNames) +
                     ") or WIDTHxHEIGHT, such as 595x842 (points), 210mmx297mm or 8.5inx11in, at "
                     "most 14400 points; not " +
                     text);
}

double parseLimit(const char* option, const std::string& text) {
  const auto number = parseNumber(text);
  if (!number || *number < 0) {
    throw UsageFailure(std::string(option) + ": give a number, 0 for no limit; not " + text);
  }
  return *number;
}

// How many letters must change to make one word of the other.
size_t distance(std::string_view one, std::string_view other) {
  std::vector<size_t> row(other.size() + 1);
  for (size_t i = 0; i < row.size(); ++i) {
    row[i] = i;
  }
  for (size_t i = 0; i < one.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < other.size(); ++j) {
      const size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

// The likeliest of the words, or nothing when none is near.
std::string nearest(std::string_view word, const std::vector<std::string>& words) {
  constexpr size_t farthest = 3;
  std::string best;
  size_t least = std::min(farthest, word.size() / 2) + 1;
  for (const std::string& each : words) {
    if (distance(word, each) < least) {
      least = distance(word, each);
      best = each;
    }
  }
  return best;
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const auto& [name, command] : commands) {
    names.emplace_back(name);
  }
  return names;
}

bool isPostScript(const std::string& path) {
  if (path.ends_with(".ps") || path.ends_with(".eps")) {
    return true;
  }
  std::array<char, 2> start{};
  std::ifstream(systemPath(path), std::ios::binary).read(start.data(), start.size());
  return start[0] == '%' && start[1] == '!';
}

std::string utf8Path(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string pdfNameOf(const std::string& input) {
  return utf8Path(systemPath(input).replace_extension(".pdf"));
}

class CommandLine {
 public:
  explicit CommandLine(std::vector<std::string> words) : words_(std::move(words)) {}
  Options parse();

 private:
  void takeCommand();
  void addConversionOptions();
  void addTitleOptions();
  void run();
  [[noreturn]] void refuseExtra(const std::string& word) const;
  void suggestCommand() const;
  void settleFiles();
  void settleOutputs();
  void addTextOption(const char* name, std::string& text) { app_.add_option(name, text); }

  std::vector<std::string> words_;
  Options options_;
  CLI::App app_;
  std::string commandName_ = "convert";
  bool commandIsNamed_ = false;
  std::vector<std::string> files_;
  std::string outputFolder_;
  std::string pageSize_;
  std::string matrix_;
  std::string seconds_;
  std::string megabytes_;
};

void CommandLine::takeCommand() {
  for (auto word = words_.begin(); word != words_.end(); ++word) {
    for (const auto& [name, command] : commands) {
      if (*word == name) {
        commandName_ = name;
        options_.command = command;
        commandIsNamed_ = true;
        words_.erase(word);
        return;
      }
    }
    if (!word->starts_with("-") || *word == "-") {
      return;
    }
  }
}

void CommandLine::addConversionOptions() {
  app_.add_option("--page-size", pageSize_);
  app_.add_option("--matrix", matrix_);
  app_.add_option("--json", options_.json);
  app_.add_option("--time-limit", seconds_);
  app_.add_option("--memory-limit", megabytes_);
  app_.add_flag("--quiet", options_.quiet);
  app_.add_flag("--strict", options_.strict);
  if (options_.command == Command::convert) {
    app_.add_flag("--content", options_.contentOnly);
    app_.add_option("--output-dir", outputFolder_);
    addTextOption("--title", options_.info.title);
    addTextOption("--author", options_.info.author);
    addTextOption("--creator", options_.info.creator);
    addTextOption("--subject", options_.info.subject);
  }
  if (options_.command == Command::objects) {
    addTextOption("--to", options_.folder);
  }
}

void CommandLine::addTitleOptions() {
  app_.add_option_function<std::vector<std::string>>(
      "--set", [this](const std::vector<std::string>& pairs) {
        for (const std::string& pair : pairs) {
          const size_t equals = pair.find('=');
          if (equals == std::string::npos || equals == 0) {
            throw UsageFailure("--set: give KEY=VALUE, not " + pair);
          }
          options_.settings.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
        }
      });
  app_.add_option("--existing", options_.existing);
}

void CommandLine::refuseExtra(const std::string& word) const {
  std::vector<std::string> known{"--help", "--version"};
  for (const CLI::Option* option : app_.get_options()) {
    known.push_back(option->get_name());
  }
  const std::string near = nearest(word.substr(0, word.find('=')), known);
  throw UsageFailure("there is no option " + word +
                     (near.empty() ? "; quillpress " + commandName_ + " --help lists them"
                                   : "; is " + near + " meant?"));
}

void CommandLine::run() {
  app_.set_help_flag();
  app_.allow_extras();
  // A path that begins with a slash is no option, on Windows either.
  app_.allow_windows_style_options(false);
  const bool takesTitle = options_.command == Command::name || options_.command == Command::xmp;
  if (takesTitle) {
    addTitleOptions();
  } else {
    addConversionOptions();
  }
  std::vector<std::string> reversed(words_.rbegin(), words_.rend());
  try {
    app_.parse(reversed);
  } catch (const CLI::ParseError& error) {
    throw UsageFailure(error.what());
  }
  for (const std::string& word : app_.remaining()) {
    if (word.starts_with("-") && word != "-" && word != "--") {
      refuseExtra(word);
    }
    if (word != "--") {
      files_.push_back(word);
    }
  }
}

void CommandLine::settleOutputs() {
  if (!outputFolder_.empty()) {
    for (const std::string& input : files_) {
      options_.inputs.push_back(input);
      const std::string name = pdfNameOf(input == "-" ? "standard-input" : input);
      options_.outputs.push_back(utf8Path(systemPath(outputFolder_) / systemPath(name).filename()));
    }
    return;
  }
  if (files_.size() > 2 ||
      (files_.size() == 2 && isPostScript(files_[1]) && !isSameFile(files_[0], files_[1]))) {
    throw UsageFailure("for several inputs give --output-dir FOLDER; OUTPUT is never " +
                       std::string("PostScript"));
  }
  options_.inputs = {files_[0]};
  const bool toStandard =
      options_.command == Command::content || options_.contentOnly || files_[0] == "-";
  options_.outputs = {files_.size() == 2 ? files_[1] : toStandard ? "-" : pdfNameOf(files_[0])};
}

// A first word that is no file may be a misspelt command.
void CommandLine::suggestCommand() const {
  const std::string& first = files_[0];
  const std::string near = nearest(first, commandNames());
  if (!commandIsNamed_ && !near.empty() && first != "-" && !fs::exists(systemPath(first))) {
    throw UsageFailure("there is neither a command nor a file " + first + "; is " + near +
                       " meant?");
  }
}

void CommandLine::settleFiles() {
  const bool takesTitle = options_.command == Command::name || options_.command == Command::xmp;
  if (options_.command == Command::operators) {
    options_.inputs = files_;
    return;
  }
  if (files_.empty()) {
    throw UsageFailure(takesTitle ? "give a document's TITLE" : "give an INPUT file");
  }
  suggestCommand();
  if (takesTitle) {
    options_.title = files_[0];
  } else if (options_.command == Command::convert || options_.command == Command::content) {
    settleOutputs();
  } else {
    options_.inputs = files_;
  }
  if (options_.command == Command::objects && options_.folder.empty()) {
    throw UsageFailure("give the folder for the objects: --to FOLDER");
  }
}

Options CommandLine::parse() {
  takeCommand();
  run();
  if (!pageSize_.empty()) {
    options_.pageSize = parsePageSize(pageSize_);
  }
  if (!matrix_.empty()) {
    options_.pageMatrix = parseMatrix(matrix_);
  }
  if (!seconds_.empty()) {
    options_.limits.seconds = parseLimit("--time-limit", seconds_);
  }
  if (!megabytes_.empty()) {
    options_.limits.bytes =
        static_cast<size_t>(parseLimit("--memory-limit", megabytes_) * (1 << 20));
  }
  settleFiles();
  return options_;
}

// Whether the words ask for a text, which is then shown.
bool showsText(const std::vector<std::string>& words) {
  if (std::find(words.begin(), words.end(), "--version") != words.end()) {
    std::cout << "quillpress " QUILLPRESS_VERSION "\n";
    return true;
  }
  for (const char* help : {"--help", "-h"}) {
    if (std::find(words.begin(), words.end(), help) != words.end()) {
      std::cout << helpText(words.front());
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<Options> parseOptions(std::vector<std::string> words, int& exitStatus) {
  words.erase(words.begin());
  if (showsText(words)) {
    exitStatus = exitWhole;
    return std::nullopt;
  }
  exitStatus = exitNothingMade;
  if (words.empty()) {
    std::cerr << helpText("");
    return std::nullopt;
  }
  try {
    return CommandLine(words).parse();
  } catch (const UsageFailure& failure) {
    std::cerr << "quillpress: " << failure.what() << "\nquillpress --help tells more\n";
    return std::nullopt;
  }
}

}  // namespace quillpress
