// Buffered streams over files, opened so that others may read and write the file meanwhile.
//
// Modes are those of the C runtime: "r", "w", "a" and their "+" forms; with "b" the bytes are the
// file's own, without it the stream is a text stream: CR LF is read as LF, the byte 0x1A ends the
// input, and LF is written as CR LF.
//
//   function             at the end or on failure
//   Read, Write          fewer bytes than asked; AtEnd() or HasError() says why
//   ReadLine             0; AtEnd() or HasError() says why
//   ReadByte             -1
//   Seek, Flush, Close   false
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace hv::platform {

class Stream {
 public:
  Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  virtual ~Stream() = default;  // closes; a failure of that goes unnoticed

  virtual std::size_t Read(void* buffer, std::size_t count) = 0;

  // The next byte as 0 to 255, or -1.
  virtual int ReadByte() = 0;

  // Reads up to `size` - 1 bytes, to the first line feed at most and that included, and ends them
  // with NUL. Gives their number: 0 when there was nothing to read, with the buffer untouched, and
  // after an error.
  std::size_t ReadLine(char* buffer, std::size_t size);

  // Bytes are counted before line ends become CR LF. What was counted may still wait in a buffer.
  virtual std::size_t Write(const void* bytes, std::size_t count) = 0;
  virtual bool Flush() = 0;

  // The offset of the next byte from the start of the file, -1 when it cannot be told, and the way
  // back to such an offset, which also forgets the end of file.
  virtual int64_t Position() = 0;
  virtual bool Seek(int64_t position) = 0;

  // Whether a read has met the end of the input.
  virtual bool AtEnd() const = 0;
  // Whether a read, write or flush has failed.
  virtual bool HasError() const = 0;

  // Writes what waits and closes the file. Once only; a second call gives true.
  virtual bool Close() = 0;
};

// Opens a stream, or returns NULL: no such file, a directory, no access, an unknown mode.
std::unique_ptr<Stream> OpenStream(const char* path, const char* mode);

// Opens a new binary file to be written and read, in the directory that the system has for such
// files. Nobody else finds it, and it is gone when the stream is closed. NULL when none can be
// made.
std::unique_ptr<Stream> OpenScratchStream();

}  // namespace hv::platform
