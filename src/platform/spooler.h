// The print spooler: queues, and raw documents written to them.
//
// On POSIX systems a destination is a queue when it is, in this order, an address
// "socket://host[:port]" (port 9100; one connection a document), the plain name of a directory in
// the spool folder, or a queue known to CUPS, whose client library is looked for at run time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace hv::platform {

// An open printer. Destroying it closes it; a document that was not ended then leaves nothing at
// the queue, as far as the system can take it back.
class SpoolPrinter {
 public:
  SpoolPrinter() = default;
  SpoolPrinter(const SpoolPrinter&) = delete;
  SpoolPrinter& operator=(const SpoolPrinter&) = delete;
  virtual ~SpoolPrinter() = default;

  // Starts a raw document. False when the queue does not take one.
  virtual bool StartDocument(const char* documentName) = 0;

  // Hands on the bytes at once. `written` receives how many the queue took; fewer than `length` is
  // a failure, which LastError explains.
  virtual void Write(const void* bytes, uint32_t length, uint32_t* written) = 0;

  // Completes the document. False when it could not be completed; nothing is left of it then.
  virtual bool EndDocument() = 0;

  // The system error of the last failure, 0 before one.
  virtual uint32_t LastError() const = 0;

  // The handle as the system knows it, to be shown in messages.
  virtual int32_t HandleValue() const = 0;
};

// Opens a queue, or returns NULL when there is no such queue.
std::unique_ptr<SpoolPrinter> OpenSpoolPrinter(const char* destination);

}  // namespace hv::platform
