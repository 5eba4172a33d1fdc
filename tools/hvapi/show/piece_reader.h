// Cuts a byte stream into pieces, each with a meaning. The pieces lie one after the other and cover
// every byte once: Emit makes a piece of all that was taken since the last one. Memory is bounded,
// however large the stream or a piece of it.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace hvtool {

struct Piece {
  uint64_t offset = 0;
  uint64_t length = 0;
  std::string bytes;  // the first ones, MaxShown at most
  std::string meaning;
  bool isText = false;  // to be read as a text
};

class PieceReader {
 public:
  using Sink = std::function<void(const Piece& piece)>;

  static constexpr std::size_t MaxShown = 80;
  // How far ahead Peek sees.
  static constexpr std::size_t MaxAhead = 4096;

  PieceReader(std::istream* stream, Sink sink);

  bool AtEnd() { return Peek() < 0; }
  // The byte so far ahead, -1 behind the end.
  int Peek(std::size_t ahead = 0);
  bool Matches(std::string_view text);
  // An integer of 1 to 4 bytes so far ahead, low byte first; bytes that are not there count as 0.
  uint32_t PeekNumber(std::size_t ahead, unsigned bytes);

  // Takes so many bytes into the piece, or those that there are, and says how many.
  uint64_t Take(uint64_t count = 1);
  // Takes bytes up to, and not including, the text; to the end when it does not come.
  void TakeUpTo(std::string_view text);
  // Takes a line with its line feed; an ESC ends it, too.
  void TakeLine();

  uint64_t Offset() const { return offset_; }
  // The bytes taken since the last piece, and the first of them.
  uint64_t Taken() const { return offset_ - piece_.offset; }
  std::string_view Shown() const { return piece_.bytes; }

  void Emit(const std::string& meaning, bool isText = false);

 private:
  bool Fill(std::size_t ahead);

  std::istream* stream_;
  Sink sink_;
  std::vector<char> buffer_;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  uint64_t offset_ = 0;  // of the next byte
  Piece piece_;          // what was taken so far
};

}  // namespace hvtool
