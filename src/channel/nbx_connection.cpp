#include "channel/nbx_connection.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/system_facts.h"
#include "support/byte_order.h"

namespace hv {
namespace {

constexpr uint32_t ComputerNameSize = 16;
constexpr uint32_t UserNameSize = 80;
constexpr std::string_view ApplicationTag = "Pallado";

// Four offsets and a size, then four texts, each ended by NUL:
//   0 size of the block   4 computer name   8 user name   12 application tag   16 job name
std::vector<uint8_t> BuildDocumentBlock(std::string_view computer, std::string_view user,
                                        std::string_view job) {
  constexpr std::size_t TextStart = 20;
  const std::string_view texts[] = {computer, user, ApplicationTag, job};
  std::size_t size = TextStart;
  for (const std::string_view text : texts) size += text.size() + 1;

  std::vector<uint8_t> block(size);
  StoreLe32(&block[0], static_cast<uint32_t>(size));
  std::size_t at = TextStart;
  std::size_t offsetAt = 4;
  for (const std::string_view text : texts) {
    StoreLe32(&block[offsetAt], static_cast<uint32_t>(at));
    std::copy(text.begin(), text.end(), &block[at]);
    at += text.size() + 1;
    offsetAt += 4;
  }
  return block;
}

}  // namespace

NbxConnection::NbxConnection(NbxBinding library, const HvJobInfo& job)
    : library_(std::move(library)), address1_(job.nbxAddress1), address2_(job.nbxAddress2) {}

std::unique_ptr<NbxConnection> NbxConnection::Open(const HvJobInfo& job) {
  std::optional<NbxBinding> library = NbxBinding::Bind();
  if (!library) return nullptr;
  // Made first: once the library is connected, nothing may fail without disconnecting it.
  std::unique_ptr<NbxConnection> connection(new NbxConnection(std::move(*library), job));
  connection->connected_ =
      connection->library_->open(connection->address1_, connection->address2_, 0) == 0;
  return connection->connected_ ? std::move(connection) : nullptr;
}

NbxConnection::~NbxConnection() {
  if (documentStarted_) library_->endDoc(address2_, 0);
  if (connected_) library_->close(address1_, address2_);
}

bool NbxConnection::StartDocument(const char* jobName) {
  char computer[ComputerNameSize];
  char user[UserNameSize];
  const bool hasComputer = platform::ComputerName(computer, sizeof computer);
  const bool hasUser = platform::UserName(user, sizeof user);
  const std::vector<uint8_t> block =
      BuildDocumentBlock(hasComputer ? computer : "", hasUser ? user : "", jobName);
  documentStarted_ = library_->startDoc(address2_, 0, block.data()) == 0;
  return documentStarted_;
}

bool NbxConnection::Write(const void* bytes, uint32_t length, uint32_t* taken) {
  *taken = length;
  return library_->write(address1_, address2_, 0, bytes, taken, 1) == 0;
}

}  // namespace hv
