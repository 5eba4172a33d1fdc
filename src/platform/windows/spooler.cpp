#include "platform/spooler.h"

#include "platform/system_error.h"
#include "platform/windows/windows_calls.h"
// Behind the system's own types.
#include <winspool.h>

namespace hv::platform {
namespace {

class WindowsPrinter final : public SpoolPrinter {
 public:
  ~WindowsPrinter() override {
    if (printer_ != nullptr) ClosePrinter(printer_);
  }

  bool Open(const char* name) {
    return OpenPrinterA(const_cast<char*>(name), &printer_, nullptr) != 0;
  }

  bool StartDocument(const char* documentName) override {
    // The record takes texts that it does not change.
    char rawData[] = "RAW";
    DOC_INFO_1A document = {};
    document.pDocName = const_cast<char*>(documentName);
    document.pDatatype = rawData;
    const bool started = StartDocPrinterA(printer_, 1, reinterpret_cast<uint8_t*>(&document)) != 0;
    return Note(started);
  }

  void Write(const void* bytes, uint32_t length, uint32_t* written) override {
    DWORD taken = 0;
    WritePrinter(printer_, const_cast<void*>(bytes), length, &taken);
    *written = taken;
    Note(taken == length);
  }

  bool EndDocument() override { return Note(EndDocPrinter(printer_) != 0); }

  uint32_t LastError() const override { return error_; }

  int32_t HandleValue() const override {
    return static_cast<int32_t>(reinterpret_cast<intptr_t>(printer_));
  }

 private:
  // Keeps the system's error of a failed call.
  bool Note(bool succeeded) {
    if (!succeeded) error_ = GetLastError();
    return succeeded;
  }

  HANDLE printer_ = nullptr;
  uint32_t error_ = ErrorNone;
};

}  // namespace

std::unique_ptr<SpoolPrinter> OpenSpoolPrinter(const char* destination) {
  // An empty name would open the print server.
  if (*destination == '\0') return nullptr;
  auto printer = std::make_unique<WindowsPrinter>();
  if (!printer->Open(destination)) return nullptr;
  return printer;
}

}  // namespace hv::platform
