#include "show/piece_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace hvtool {
namespace {

constexpr std::size_t BufferSize = 65536;
static_assert(BufferSize > PieceReader::MaxAhead);

constexpr char LineFeed = '\n';
constexpr char Escape = '\x1B';

}  // namespace

PieceReader::PieceReader(std::istream* stream, Sink sink)
    : stream_(stream), sink_(std::move(sink)), buffer_(BufferSize) {}

// Makes the byte so far ahead part of the buffer, if there is one.
bool PieceReader::Fill(std::size_t ahead) {
  std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(next_),
            buffer_.begin() + static_cast<std::ptrdiff_t>(filled_), buffer_.begin());
  filled_ -= next_;
  next_ = 0;
  stream_->read(&buffer_[filled_], static_cast<std::streamsize>(buffer_.size() - filled_));
  filled_ += static_cast<std::size_t>(stream_->gcount());
  return ahead < filled_;
}

int PieceReader::Peek(std::size_t ahead) {
  if (ahead >= filled_ - next_ && !Fill(ahead)) return -1;
  return static_cast<unsigned char>(buffer_[next_ + ahead]);
}

bool PieceReader::Matches(std::string_view text) {
  return Peek(text.size() - 1) >= 0 && std::memcmp(&buffer_[next_], text.data(), text.size()) == 0;
}

uint32_t PieceReader::PeekNumber(std::size_t ahead, unsigned bytes) {
  uint32_t number = 0;
  for (unsigned i = 0; i < bytes; ++i) {
    const int byte = Peek(ahead + i);
    if (byte > 0) number |= static_cast<uint32_t>(byte) << 8 * i;
  }
  return number;
}

uint64_t PieceReader::Take(uint64_t count) {
  uint64_t taken = 0;
  while (taken < count && Peek() >= 0) {
    const auto part = static_cast<std::size_t>(std::min<uint64_t>(count - taken, filled_ - next_));
    const std::size_t shown = std::min(part, MaxShown - piece_.bytes.size());
    piece_.bytes.append(&buffer_[next_], shown);
    next_ += part;
    offset_ += part;
    taken += part;
  }
  return taken;
}

void PieceReader::TakeUpTo(std::string_view text) {
  while (Peek() >= 0) {
    const auto* const from = buffer_.data() + next_;
    const auto* const to = buffer_.data() + filled_;
    const auto* const found = std::find(from, to, text.front());
    Take(static_cast<uint64_t>(found - from));
    if (found == to) continue;
    if (Matches(text)) return;
    Take();
  }
}

void PieceReader::TakeLine() {
  while (Peek() >= 0) {
    const auto* const from = buffer_.data() + next_;
    const auto* const to = buffer_.data() + filled_;
    const auto* const end =
        std::find_if(from, to, [](char c) { return c == LineFeed || c == Escape; });
    const bool isLineEnd = end != to && *end == LineFeed;
    const bool isEnd = end != to;
    Take(static_cast<uint64_t>(end - from));
    if (isLineEnd) Take();
    if (isEnd) return;
  }
}

void PieceReader::Emit(const std::string& meaning, bool isText) {
  piece_.length = Taken();
  if (piece_.length == 0) return;
  piece_.meaning = meaning;
  piece_.isText = isText;
  sink_(piece_);
  piece_ = Piece{};
  piece_.offset = offset_;
}

}  // namespace hvtool
