// hvapi show

#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "families.h"
#include "program.h"
#include "show/explainer.h"
#include "source_file.h"

namespace hvtool {
namespace {

constexpr const char* ShowManual =
    "Explains what a printer makes of a file: framing in PJL or ESC [ K sequences, PCL commands "
    "(combined ones one by one), HP-GL/2 and PostScript summed up, fonts and macros with their "
    "sizes, PCL XL operators with their attributes. A line is the offset and the number of the "
    "bytes, the first of them, and their meaning; together the lines cover every byte of the "
    "file. What is not known is shown as unknown.\n"
    "\n"
    "The rows of a picture are one line, unless --rows is given. With --json each line is an "
    "object with the members offset, length, bytes (in hexadecimal, the first ones of a long "
    "piece) and meaning.\n"
    "\n"
    "    hvapi show report.pcl\n"
    "    gs -q -sDEVICE=ljet4 -o - page.ps | hvapi show -\n"
    "    hvapi show macro.bin --json | grep -c unknown";

// Bytes of a piece that a line shows.
constexpr std::size_t ShownAsHex = 12;
constexpr std::size_t ShownInJson = 32;
constexpr std::size_t ShownAsText = 40;

std::string Hex(std::string_view bytes, const char* between) {
  std::string text;
  for (const char c : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
    if (!text.empty()) text += between;
    text += digits;
  }
  return text;
}

// Bytes of a text that no terminal takes amiss: what is not printable becomes a dot.
std::string Printable(std::string_view bytes) {
  while (!bytes.empty() && (bytes.back() == '\n' || bytes.back() == '\r')) bytes.remove_suffix(1);
  std::string text(bytes);
  for (char& c : text) {
    if (c < 0x20 || c > 0x7E) c = '.';
  }
  return text;
}

void PrintPiece(const Piece& piece) {
  std::string bytes;
  if (piece.isText) {
    bytes = Printable(piece.bytes.substr(0, ShownAsText + 2));
    const bool isCut = bytes.size() > ShownAsText || piece.length > piece.bytes.size();
    if (isCut) bytes = bytes.substr(0, ShownAsText - 3) + " ..";
  } else {
    bytes = Hex(std::string_view(piece.bytes).substr(0, ShownAsHex), " ");
    if (piece.length > ShownAsHex) bytes += " ..";
  }
  char columns[64];
  std::snprintf(columns, sizeof columns, "%08llx %7llu  ",
                static_cast<unsigned long long>(piece.offset),
                static_cast<unsigned long long>(piece.length));
  bytes.resize(std::max(bytes.size(), ShownAsText), ' ');
  PrintLine(columns + bytes + "  " + piece.meaning);
}

void PrintAsJson(const Piece& piece) {
  const Json members = {{"offset", piece.offset},
                        {"length", piece.length},
                        {"bytes", Hex(std::string_view(piece.bytes).substr(0, ShownInJson), "")},
                        {"meaning", piece.meaning}};
  PrintLine(members.dump(-1, ' ', false, Json::error_handler_t::replace));
}

int Explain(std::istream* stream, const std::string& name, bool eachRow, bool json) {
  if (!json) {
    PrintLine("offset    length  bytes                                     meaning");
  }
  Explainer(stream, json ? PrintAsJson : PrintPiece, eachRow).Run();
  if (stream->bad()) return Outcome(HV_READ_FAILED, "cannot show all of " + name);
  return HV_OK;
}

int Show(const std::string& path, bool eachRow, bool json) {
  if (path == StandardInput) {
    ReadInputAsBytes();
    return Explain(&std::cin, "standard input", eachRow, json);
  }
  if (HvFilExists(path.c_str()) == 0) {
    return Outcome(HV_NOT_FOUND, "cannot show " + Quoted(path));
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) return Outcome(HV_CANNOT_OPEN, "cannot show " + Quoted(path));
  return Explain(&file, Quoted(path), eachRow, json);
}

}  // namespace

void AddShowCommands(CLI::App* program) {
  struct Options {
    std::string file;
    bool eachRow = false;
    bool json = false;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddCommand(program, "show", "explain the bytes of a job to a printer", ShowManual);
  AddSourceArgument(command, "FILE", &options->file, "The file");
  AddFlag(command, "--rows", &options->eachRow, "Show each row of a picture by itself");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] { return Show(options->file, options->eachRow, options->json); });
}

}  // namespace hvtool
