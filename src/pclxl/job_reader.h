// Reads a PCL XL job of one page: its header, its session, the operators in their legal order. It
// holds no job and calls no system, so that jobs of any size can be read from anywhere.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "pclxl/tags.h"

namespace hv {

// Results of reading and converting a job. 1 to 3 and 54 concern operators and values, 46 to 49 the
// header, 51 and 52 the page, 4 and 53 the system.
enum PclXlResult : uint32_t {
  PclXlOk = 0,
  PclXlEnded = 1,          // the job ends early, cannot be read, or holds an ESC
  PclXlMisplaced = 2,      // not a session, or an operator that may not stand where it does
  PclXlBadTag = 3,         // a byte that is nothing, or nothing that is accepted
  PclXlNoMemory = 4,       // no memory for a buffer
  PclXlBadBinding = 46,    // the header does not begin with ")": not binary, low byte first
  PclXlBadName = 47,       // the header names another protocol
  PclXlBadProtocol = 48,   // protocol class or revision other than 1
  PclXlBadHeader = 49,     // a blank or ";" is missing in the header
  PclXlSecondPage = 51,    // a second page
  PclXlStreamOnPage = 52,  // a stream is defined or run on the page
  PclXlWorkFile = 53,      // a work file cannot be opened, read or written; no page
  PclXlTooLong = 54,       // an array length of a wrong type, more than 100 values for an operator,
                           // session settings of more than 255 bytes
};

// Takes what lies between BeginPage and EndPage.
class PclXlPage {
 public:
  virtual ~PclXlPage() = default;
  virtual bool Begin() = 0;
  // In the order of the job, in pieces of any length.
  virtual bool Take(std::span<const uint8_t> bytes) = 0;
  // The page ends. Of what was taken, the first `length` bytes are its operators; the rest belongs
  // to EndPage.
  virtual bool End(uint64_t length) = 0;
};

class PclXlJobReader {
 public:
  // Fills a buffer as far as there are bytes; 0 at the end and on failure.
  using Source = std::function<std::size_t(uint8_t* buffer, std::size_t size)>;

  // The page may be NULL: its operators are then only looked at.
  PclXlJobReader(Source source, PclXlPage* page);

  // Reads the job up to EndSession. Once only.
  PclXlResult Read();

  // The values of BeginSession and its operator, as the job has them. Known once Read succeeded.
  std::span<const uint8_t> Settings() const { return {settings_.data(), settingsSize_}; }

  // Where reading stopped: the byte that was read last as an operator, or that was none, and its
  // offset. In the header the offset alone counts.
  uint8_t LastOperator() const { return lastOperator_; }
  uint64_t LastOffset() const { return lastOffset_; }

 private:
  enum class Kept : uint8_t { Nothing, Settings, Page };

  static constexpr std::size_t BufferSize = 16384;
  static constexpr std::size_t MaxSettings = 255;
  static constexpr unsigned MaxValues = 100;

  PclXlResult ReadHeader();
  PclXlResult ReadSession();
  PclXlResult ReadPage();
  void PassPlainOperators();
  PclXlResult Scan();
  PclXlResult ReadArray(uint8_t tag);
  PclXlResult HandleOperator();

  bool Fill();
  int Next();
  bool Skip(uint64_t count);
  uint64_t Offset() const { return bufferOffset_ + next_; }
  void KeepUpTo(std::size_t end);

  Source source_;
  PclXlPage* page_;
  std::unique_ptr<uint8_t[]> buffer_;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  uint64_t bufferOffset_ = 0;  // of the buffer's first byte
  // What becomes of the bytes read, from keptTo_ in the buffer on.
  Kept kept_ = Kept::Nothing;
  std::size_t keptTo_ = 0;
  bool pageTaken_ = true;  // the page has taken all it was given

  std::array<uint8_t, MaxSettings> settings_ = {};
  std::size_t settingsSize_ = 0;
  bool settingsFit_ = true;
  unsigned valueCount_ = 0;  // of the operator that is being read
  bool pageSeen_ = false;
  uint8_t lastOperator_ = 0;
  uint64_t lastOffset_ = 0;
};

}  // namespace hv
