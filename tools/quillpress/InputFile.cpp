#include "tools/quillpress/InputFile.h"

#include <algorithm>
#include <stdexcept>

#include "tools/quillpress/Deflate.h"

namespace quillpress {
namespace {

using std::string_view_literals::operator""sv;

struct Kind {
  std::string_view begin;
  std::string_view name;
};

constexpr Kind kinds[] = {
    {"%PDF-", "a PDF file already"},
    {"\x89PNG", "a PNG image"},
    {"\xFF\xD8\xFF", "a JPEG image"},
    {"GIF8", "a GIF image"},
    {"II*\0"sv, "a TIFF image"},
    {"MM\0*"sv, "a TIFF image"},
    {"BM", "a BMP image"},
    {"PK\3\4", "a ZIP file, or a document of an office program"},
    {"\xD0\xCF\x11\xE0", "a document of an older office program"},
    {"\x1F\x9D", "a file compressed by compress"},
    {"BZh", "a file compressed by bzip2"},
    {"\xFD"
     "7zXZ",
     "a file compressed by xz"},
    {"\x28\xB5\x2F\xFD", "a file compressed by zstd"},
    {"%!PS-AdobeFont", "a font"},
    {"%!FontType1", "a font"},
    {"\x80\1", "a font"},
    {"\x7F"
     "ELF",
     "a program"},
    {"MZ", "a program"},
    {"<?xml", "an XML file"},
    {"<svg", "an SVG image"},
    {"<!DOCTYPE", "a web page"},
    {"<html", "a web page"},
    {"{\\rtf", "an RTF document"},
    {"\xFF\xFE", "text in UTF-16"},
    {"\xFE\xFF", "text in UTF-16"},
    {"\x1B"
     "E",
     "a job in another printer's language (PCL)"},
};

// Bytes that no text has are many, and nothing says that it is PostScript all the same.
bool looksBinary(std::string_view bytes) {
  constexpr std::string_view dosHeader = "\xC5\xD0\xD3\xC6";
  const std::string_view start = bytes.substr(0, 1024);
  const auto isControl = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < ' ' && (byte < '\t' || byte > '\r') && byte != 4 && byte != 27) || byte >= 0x80;
  };
  const auto controls = std::count_if(start.begin(), start.end(), isControl);
  return !bytes.starts_with(dosHeader) && start.find("%!") == std::string_view::npos &&
         static_cast<size_t>(controls) * 10 > start.size();
}

}  // namespace

std::string shownName(const std::string& path) {
  return path == "-" ? "standard input" : path;
}

std::string_view foreignKind(std::string_view bytes) {
  for (const Kind& kind : kinds) {
    if (bytes.starts_with(kind.begin)) {
      return kind.name;
    }
  }
  return looksBinary(bytes) ? "no PostScript, which is text" : "";
}

InputFile::InputFile(const std::string& path)
    : file_(std::make_unique<FileBytes>(path)), bytes_(file_->view()) {
  const std::string name = shownName(path);
  if (isGzip(bytes_)) {
    try {
      unpacked_ = gunzip(bytes_);
    } catch (const std::invalid_argument& failure) {
      throw FileFailure("cannot read " + name + ": " + failure.what());
    }
    bytes_ = unpacked_;
    file_.reset();
  }
  if (bytes_.empty()) {
    throw FileFailure(name + " is empty; give a file with PostScript in it");
  }
  if (const std::string_view kind = foreignKind(bytes_); !kind.empty()) {
    throw FileFailure(name + " is " + std::string(kind) + "; give a PostScript file");
  }
}

}  // namespace quillpress
