// Queues that CUPS knows, on the server that its client library is set up for.
//
// A document is a job of one raw file: Create-Job, then Send-Document in chunks as the bytes come.
// Each request has a connection of its own. To break one off is how a document is given up: the
// server drops what came of it, and the job without a file is cancelled.

#include <errno.h>
#include <sys/socket.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/broken_pipe.h"
#include "platform/posix/cups_library.h"
#include "platform/posix/deadline.h"
#include "platform/posix/environment.h"
#include "platform/posix/error_numbers.h"
#include "platform/posix/names.h"
#include "platform/posix/spool_queues.h"

namespace hv::platform {
namespace {

using std::chrono::seconds;

// The queue may lie on a server whose disk or network is slow: sending waits this many times as
// long as connecting.
constexpr int SendingPatience = 10;
constexpr std::size_t LongestName = 127;     // of a queue
constexpr std::size_t LongestJobName = 255;  // of a name in a message
constexpr const char* RawFormat = "application/vnd.cups-raw";

// What CUPS takes for the name of a queue.
bool IsQueueName(std::string_view name) {
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || byte == 0x7F || c == '?' || c == '#' || c == '\'' || c == '"') return false;
  }
  return IsPlainName(name) && name.size() <= LongestName;
}

// The length of the UTF-8 sequence at the start of text, 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 0 || first > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

// A document name as messages allow it: UTF-8 without control characters. A byte that is none is
// taken for Latin-1.
std::string MessageName(std::string_view text) {
  std::string name;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    const auto first = static_cast<unsigned char>(text[0]);
    std::string piece(text.substr(0, length));
    if (length == 0) {
      piece = {static_cast<char>(0xC0 | first >> 6), static_cast<char>(0x80 | (first & 0x3F))};
    } else if (first < ' ' || first == 0x7F) {
      piece = " ";
    }
    if (name.size() + piece.size() > LongestJobName) break;
    name += piece;
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return name;
}

using Connection = std::unique_ptr<HttpConnection, void (*)(HttpConnection*)>;
using Message = std::unique_ptr<IppMessage, void (*)(IppMessage*)>;

struct Reply {
  bool came;        // in time
  Message message;  // none when the reply is a refusal
};

// One queue of the server as the requests name it.
class CupsPrinter {
 public:
  CupsPrinter(const CupsFunctions& cups, const char* name)
      : cups_(cups), timeout_(TimeoutSeconds()), resource_(std::string("/printers/") + name) {
    std::array<char, 1024> uri = {};
    cups_.httpAssembleURI(HttpUriCodingAll, uri.data(), static_cast<int>(uri.size()), "ipp",
                          nullptr, "localhost", 0, resource_.c_str());
    uri_ = uri.data();
  }

  const CupsFunctions* operator->() const { return &cups_; }
  const char* Resource() const { return resource_.c_str(); }

  // A request about this queue, with the attributes that each begins with.
  Message NewRequest(IppOperation operation, int job = 0) const {
    Message request(cups_.ippNewRequest(operation), cups_.ippDelete);
    AddString(request, IppTagUri, "printer-uri", uri_.c_str());
    if (job != 0) {
      cups_.ippAddInteger(request.get(), IppTagOperation, IppTagInteger, "job-id", job);
    }
    AddString(request, IppTagName, "requesting-user-name", cups_.cupsUser());
    return request;
  }

  void AddString(const Message& request, IppTag tag, const char* name, const char* value) const {
    cups_.ippAddString(request.get(), IppTagOperation, tag, name, nullptr, value);
  }

  // A connection over which the head of a request has gone; document bytes follow in chunks where
  // the request has some. None when that failed.
  Connection Begin(const Message& request, const char* resource, bool withDocument) const {
    using std::chrono::milliseconds;
    Connection connection(
        cups_.httpConnect2(cups_.cupsServer(), cups_.ippPort(), nullptr, AF_UNSPEC,
                           cups_.cupsEncryption(), 1,
                           static_cast<int>(milliseconds(timeout_).count()), nullptr),
        cups_.httpClose);
    HttpConnection* const http = connection.get();
    if (http == nullptr) return connection;
    SetTimeout(connection, withDocument ? timeout_ * SendingPatience : timeout_);
    cups_.httpClearFields(http);
    cups_.httpSetField(http, HttpFieldContentType, "application/ipp");
    cups_.httpSetLength(http, withDocument ? 0 : cups_.ippLength(request.get()));
    if (cups_.httpPost(http, resource) != 0 ||
        cups_.ippWrite(http, request.get()) != IppStateData) {
      connection.reset();
    }
    return connection;
  }

  // The reply to a request that has gone out whole.
  Reply Finish(const Connection& connection) const {
    const Deadline ending(timeout_);
    SetTimeout(connection, timeout_);
    int status = HttpStatusContinue;
    while (status == HttpStatusContinue && !ending.HasPassed()) {
      status = cups_.httpUpdate(connection.get());
    }
    Reply reply = {status > HttpStatusContinue, {nullptr, cups_.ippDelete}};
    if (status != HttpStatusOk) return reply;
    reply.message.reset(cups_.ippNew());
    int state = 0;
    while (state != IppStateData && state != IppStateError) {
      state = cups_.ippRead(connection.get(), reply.message.get());
    }
    if (state == IppStateError || cups_.ippGetStatusCode(reply.message.get()) > IppLastSuccess) {
      reply.message.reset();
    }
    return reply;
  }

  // The reply to a whole request without a document; none for a refusal, too.
  Message Ask(const Message& request, const char* resource) const {
    const Connection connection = Begin(request, resource, false);
    if (connection == nullptr) return {nullptr, cups_.ippDelete};
    return std::move(Finish(connection).message);
  }

  // Whether the server knows the queue and the queue takes jobs.
  bool TakesJobs() const {
    const Message request = NewRequest(IppGetPrinterAttributes);
    AddString(request, IppTagKeyword, "requested-attributes", "printer-is-accepting-jobs");
    const Message reply = Ask(request, Resource());
    if (reply == nullptr) return false;
    IppAttribute* accepting =
        cups_.ippFindAttribute(reply.get(), "printer-is-accepting-jobs", IppTagBoolean);
    return accepting != nullptr && cups_.ippGetBoolean(accepting, 0) != 0;
  }

 private:
  void SetTimeout(const Connection& connection, seconds timeout) const {
    cups_.httpSetTimeout(connection.get(), static_cast<double>(timeout.count()), nullptr, nullptr);
  }

  CupsFunctions cups_;
  seconds timeout_;
  std::string resource_;
  std::string uri_;
};

class CupsQueue final : public SpoolPrinter {
 public:
  explicit CupsQueue(CupsPrinter printer)
      : printer_(std::move(printer)), document_(nullptr, printer_->httpClose) {}

  ~CupsQueue() override {
    const BrokenPipeBlock noSignal;
    GiveUp();
  }

  bool StartDocument(const char* documentName) override {
    const BrokenPipeBlock noSignal;
    if (CreateJob(MessageName(documentName).c_str()) && BeginDocument()) return true;
    error_ = ErrorGeneralFailure;
    return false;
  }

  void Write(const void* bytes, uint32_t length, uint32_t* written) override {
    const BrokenPipeBlock noSignal;
    *written = 0;
    // A write of no bytes would be taken for the end.
    if (length == 0) return;
    HttpConnection* const http = document_.get();
    errno = 0;
    const ssize_t taken = printer_->httpWrite2(http, static_cast<const char*>(bytes), length);
    if (taken == static_cast<ssize_t>(length) && printer_->httpFlushWrite(http) >= 0) {
      *written = length;
      return;
    }
    // The library does not note every error, a reset for one.
    const int system = errno;
    const int noted = printer_->httpError(http);
    const SystemError reason = ErrorOfErrno(noted != 0 ? noted : system);
    error_ = reason == ErrorNone ? ErrorWriteFault : reason;
  }

  // A server that does not answer in time is left with the document, which it has whole.
  bool EndDocument() override {
    const BrokenPipeBlock noSignal;
    if (error_ == ErrorNone && printer_->httpWrite2(document_.get(), "", 0) >= 0) {
      const Reply reply = printer_.Finish(document_);
      if (!reply.came || reply.message != nullptr) {
        document_.reset();
        job_ = 0;
        return true;
      }
    }
    if (error_ == ErrorNone) error_ = ErrorGeneralFailure;
    GiveUp();
    return false;
  }

  uint32_t LastError() const override { return error_; }
  int32_t HandleValue() const override { return job_; }

 private:
  bool CreateJob(const char* name) {
    const Message request = printer_.NewRequest(IppCreateJob);
    printer_.AddString(request, IppTagName, "job-name", name);
    const Message reply = printer_.Ask(request, printer_.Resource());
    IppAttribute* id = reply == nullptr
                           ? nullptr
                           : printer_->ippFindAttribute(reply.get(), "job-id", IppTagInteger);
    if (id != nullptr) job_ = printer_->ippGetInteger(id, 0);
    return job_ > 0;
  }

  bool BeginDocument() {
    const Message request = printer_.NewRequest(IppSendDocument, job_);
    printer_.AddString(request, IppTagMimeType, "document-format", RawFormat);
    printer_->ippAddBoolean(request.get(), IppTagOperation, "last-document", 1);
    document_ = printer_.Begin(request, printer_.Resource(), true);
    return document_ != nullptr;
  }

  // Breaks the document off and cancels the job, if there is one that was not completed.
  void GiveUp() {
    document_.reset();
    if (job_ <= 0) return;
    printer_.Ask(printer_.NewRequest(IppCancelJob, job_), "/jobs/");
    job_ = 0;
  }

  CupsPrinter printer_;
  Connection document_;
  int job_ = 0;
  uint32_t error_ = ErrorNone;
};

}  // namespace

std::unique_ptr<SpoolPrinter> OpenCupsQueue(const char* destination) {
  if (!IsQueueName(destination)) return nullptr;
  const std::optional<CupsFunctions> cups = LoadCups();
  if (!cups) return nullptr;
  const BrokenPipeBlock noSignal;
  CupsPrinter printer(*cups, destination);
  if (!printer.TakesJobs()) return nullptr;
  return std::make_unique<CupsQueue>(std::move(printer));
}

}  // namespace hv::platform
