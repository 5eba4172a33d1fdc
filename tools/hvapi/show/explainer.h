// Explains a printer byte stream piece by piece: job framing, PCL, HP-GL/2, PPDS, PostScript and
// PCL XL. What it does not know passes as unknown; no stream stops it.
#pragma once

#include <cstdint>
#include <istream>
#include <string>

#include "show/piece_reader.h"

namespace hvtool {

class Explainer {
 public:
  // With `eachRow` every row of a picture is a piece of its own.
  Explainer(std::istream* stream, PieceReader::Sink sink, bool eachRow);

  void Run();

 private:
  enum class Language : uint8_t {
    Open,  // to be told by the next bytes
    Pcl,
    HpGl2,  // inside PCL
    Gl,
    Ppds,
    PostScript,
    PclXl,
  };

  // Framing: explainer.cpp
  void Step();
  void ExplainPjlLine();
  void EnterLanguage(const std::string& name);
  bool ExplainBracket();
  void ExplainEscK(uint64_t count);
  void ExplainPpdsMacro(uint64_t count);
  void ExplainDemoHeader();
  bool ExplainBlanks();
  Language Guess();
  bool ExplainStoredData();

  // pcl.cpp
  void ExplainPcl();
  void ExplainPclEscape();
  void ExplainParameters(const std::string& group);
  void ExplainPclData(std::string_view what, uint64_t count);
  std::string MacroMeaning(int64_t value);
  void EmitRows(const std::string& remark = "");
  void ExplainPlainBytes();
  void ExplainHpGl2();
  void ExplainPpds();

  // postscript.cpp
  void ExplainPostScript();

  // pclxl.cpp
  void ExplainPclXl();
  bool ExplainPclXlHeader();
  void ExplainPclXlOperator();
  bool TakePclXlValue(uint8_t tag, std::string* text);
  bool TakePclXlArray(uint8_t tag, std::string* text);
  void ExplainPclXlData(bool isShort);

  PieceReader reader_;
  bool eachRow_;
  Language language_ = Language::Open;
  std::string storedUpTo_;    // what ends the file that follows, empty: none does
  bool rowsWait_ = false;     // rows of a picture were taken that are not yet a piece,
  uint64_t rows_ = 0;         // so many
  uint64_t macroOffset_ = 0;  // where the macro definition begins
  int64_t macroId_ = -1;      // set by ESC & f # Y
  std::string lastOperator_;  // of PCL XL, for its data
};

}  // namespace hvtool
