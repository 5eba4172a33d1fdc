#include "pclxl/job_reader.h"

#include <algorithm>
#include <utility>

namespace hv {

PclXlJobReader::PclXlJobReader(Source source, PclXlPage* page)
    : source_(std::move(source)), page_(page), buffer_(new uint8_t[BufferSize]) {}

PclXlResult PclXlJobReader::Read() {
  const PclXlResult header = ReadHeader();
  if (header != PclXlOk) {
    // The byte that is wrong has been read; at the end there is none.
    lastOffset_ = header == PclXlEnded ? Offset() : Offset() - 1;
    return header;
  }

  kept_ = Kept::Settings;
  keptTo_ = next_;
  const PclXlResult scanned = Scan();
  if (scanned != PclXlOk) return scanned;
  if (lastOperator_ != PclXlBeginSession) return PclXlMisplaced;
  KeepUpTo(next_);
  kept_ = Kept::Nothing;
  if (!settingsFit_) return PclXlTooLong;
  valueCount_ = 0;
  return ReadSession();
}

// ")", a blank, the name of the protocol, its class and revision, and a comment.
PclXlResult PclXlJobReader::ReadHeader() {
  int c = Next();
  if (c < 0) return PclXlEnded;
  if (c != ')') return PclXlBadBinding;

  c = Next();
  if (c < 0) return PclXlEnded;
  if (c != ' ') return PclXlBadHeader;

  // One letter of any other kind may stand for the name.
  c = Next();
  if (c < 0) return PclXlEnded;
  const std::string_view rest = c == 'H' ? "P-PCL XL" : c == 'P' ? "CL XL" : "";
  for (const char expected : rest) {
    c = Next();
    if (c < 0) return PclXlEnded;
    if (c != expected) return PclXlBadName;
  }

  for (int part = 0; part < 2; ++part) {
    c = Next();
    if (c < 0) return PclXlEnded;
    if (c != ';') return PclXlBadHeader;
    c = Next();
    if (c < 0) return PclXlEnded;
    if (c != '1') return PclXlBadProtocol;
  }

  c = Next();
  if (c < 0) return PclXlEnded;
  if (c != ';' && c != '\n' && c != '\r') return PclXlBadHeader;
  while (c != '\n') {
    c = Next();
    if (c < 0) return PclXlEnded;
  }
  return PclXlOk;
}

PclXlResult PclXlJobReader::ReadSession() {
  for (;;) {
    PclXlResult result = Scan();
    if (result != PclXlOk) return result;
    if (!PclXlIsSessionOperator(lastOperator_)) return PclXlMisplaced;
    if (lastOperator_ == PclXlEndSession) break;
    result = lastOperator_ == PclXlBeginPage ? ReadPage() : HandleOperator();
    if (result != PclXlOk) return result;
  }
  // What was to be converted is a page.
  return pageSeen_ ? PclXlOk : PclXlWorkFile;
}

// All that lies between BeginPage and EndPage is one run of bytes of the job.
PclXlResult PclXlJobReader::ReadPage() {
  if (pageSeen_) return PclXlSecondPage;
  pageSeen_ = true;
  if (page_ != nullptr && !page_->Begin()) return PclXlWorkFile;
  valueCount_ = 0;
  kept_ = Kept::Page;
  keptTo_ = next_;
  const uint64_t pageOffset = Offset();

  uint64_t operatorOffset = 0;
  PclXlResult result = PclXlOk;
  do {
    PassPlainOperators();
    operatorOffset = Offset();
    result = Scan();
    if (result != PclXlOk) break;
    if (lastOperator_ == PclXlBeginPage) {
      result = PclXlSecondPage;
    } else if (lastOperator_ >= PclXlBeginStream && lastOperator_ <= PclXlExecStream) {
      result = PclXlStreamOnPage;
    } else if (!PclXlIsPageOperator(lastOperator_)) {
      result = PclXlMisplaced;
    } else {
      result = HandleOperator();
    }
  } while (result == PclXlOk && lastOperator_ != PclXlEndPage);

  KeepUpTo(next_);
  kept_ = Kept::Nothing;
  if (!pageTaken_) return PclXlWorkFile;
  if (result != PclXlOk || page_ == nullptr) return result;
  return page_->End(operatorOffset - pageOffset) ? PclXlOk : PclXlWorkFile;
}

// Passes operators that lie whole in the buffer with nothing but scalars, pairs and boxes, which most
// of a page are. Whatever else there is, and what is wrong, is left to Scan.
void PclXlJobReader::PassPlainOperators() {
  constexpr std::size_t Longest = PclXlMaxPlainLength + 2;  // with its attribute
  const uint8_t* const bytes = buffer_.get();
  const std::size_t start = next_;
  std::size_t at = start;
  unsigned values = 0;
  while (at + Longest <= filled_) {
    const unsigned length = PclXlPlainLengths[bytes[at]];
    if (length == 1) {
      next_ = ++at;
      values = 0;
    } else if (length > 1 && bytes[at + length] == PclXlAttribute && ++values < MaxValues) {
      at += length + 2;
    } else {
      break;
    }
  }
  if (next_ > start) lastOperator_ = bytes[next_ - 1];
}

// Reads values and their attributes up to the next operator.
PclXlResult PclXlJobReader::Scan() {
  for (;;) {
    lastOffset_ = Offset();
    const int byte = Next();
    if (byte < 0) return PclXlEnded;
    const auto tag = static_cast<uint8_t>(byte);
    const PclXlClass kind = PclXlClassOf(tag);
    PclXlResult result = PclXlOk;
    switch (kind) {
      case PclXlClass::Blank:
        continue;
      case PclXlClass::Operator:
      case PclXlClass::Data:
      case PclXlClass::ShortData:
        lastOperator_ = tag;
        return PclXlOk;
      case PclXlClass::Scalar:
      case PclXlClass::Pair:
      case PclXlClass::Box:
        if (valueCount_ == MaxValues) return PclXlTooLong;
        if (!Skip(uint64_t{PclXlElementSize(tag)} * PclXlElementCount(kind))) result = PclXlEnded;
        break;
      case PclXlClass::Array:
        if (valueCount_ == MaxValues) return PclXlTooLong;
        result = ReadArray(tag);
        break;
      case PclXlClass::Attribute:
        if (valueCount_ == MaxValues) return PclXlTooLong;
        if (Next() < 0) result = PclXlEnded;
        ++valueCount_;
        break;
      case PclXlClass::Escape:
        lastOperator_ = tag;
        return PclXlEnded;
      case PclXlClass::Unknown:
      case PclXlClass::Refused:
        lastOperator_ = tag;
        return PclXlBadTag;
    }
    if (result != PclXlOk) return result;
  }
}

PclXlResult PclXlJobReader::ReadArray(uint8_t tag) {
  const int lengthTag = Next();
  if (lengthTag < 0) return PclXlEnded;
  if (lengthTag != PclXlUbyte && lengthTag != PclXlUint16) return PclXlTooLong;
  const int low = Next();
  const int high = lengthTag == PclXlUint16 ? Next() : 0;
  if (low < 0 || high < 0) return PclXlEnded;
  const auto length = static_cast<uint32_t>(low | high << 8);
  return Skip(uint64_t{length} * PclXlElementSize(tag)) ? PclXlOk : PclXlEnded;
}

// The operator has no effect here but for the data that it may carry.
PclXlResult PclXlJobReader::HandleOperator() {
  valueCount_ = 0;
  if (lastOperator_ != PclXlData && lastOperator_ != PclXlShortData) return PclXlOk;
  const unsigned lengthBytes = lastOperator_ == PclXlData ? 4 : 1;
  uint32_t length = 0;
  for (unsigned i = 0; i < lengthBytes; ++i) {
    const int byte = Next();
    if (byte < 0) return PclXlEnded;
    length |= static_cast<uint32_t>(byte) << 8 * i;
  }
  return Skip(length) ? PclXlOk : PclXlEnded;
}

// Replaces the buffer, whose bytes are all read; false at the end.
bool PclXlJobReader::Fill() {
  KeepUpTo(filled_);
  if (!pageTaken_) return false;
  bufferOffset_ += filled_;
  next_ = filled_ = keptTo_ = 0;
  filled_ = source_(buffer_.get(), BufferSize);
  return filled_ > 0;
}

int PclXlJobReader::Next() {
  if (next_ == filled_ && !Fill()) return -1;
  return buffer_[next_++];
}

bool PclXlJobReader::Skip(uint64_t count) {
  while (count > 0) {
    if (next_ == filled_ && !Fill()) return false;
    const std::size_t part = static_cast<std::size_t>(std::min<uint64_t>(count, filled_ - next_));
    next_ += part;
    count -= part;
  }
  return true;
}

// Hands on what lies between the last call and the place `end` of the buffer.
void PclXlJobReader::KeepUpTo(std::size_t end) {
  const std::span<const uint8_t> bytes{buffer_.get() + keptTo_, end - keptTo_};
  keptTo_ = end;
  if (kept_ == Kept::Settings) {
    settingsFit_ = settingsFit_ && bytes.size() <= settings_.size() - settingsSize_;
    if (!settingsFit_) return;
    std::copy(bytes.begin(), bytes.end(), settings_.begin() + settingsSize_);
    settingsSize_ += bytes.size();
  } else if (kept_ == Kept::Page && page_ != nullptr && pageTaken_ && !bytes.empty()) {
    pageTaken_ = page_->Take(bytes);
  }
}

}  // namespace hv
