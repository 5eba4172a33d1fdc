// One document sent through the communication library: connection, document, both ended in order.
#pragma once

#include <cstdint>
#include <memory>

#include "api/hvapi.h"
#include "channel/nbx_binding.h"

namespace hv {

class NbxConnection {
 public:
  // Loads the library and connects to the addresses of the job; NULL when either fails.
  static std::unique_ptr<NbxConnection> Open(const HvJobInfo& job);

  NbxConnection(const NbxConnection&) = delete;
  NbxConnection& operator=(const NbxConnection&) = delete;
  ~NbxConnection();  // ends the document, closes the connection, lets the library go

  // Hands the library the document block: computer, user, application and job name.
  bool StartDocument(const char* jobName);

  // False when the library reports failure. `taken` is the count as the library left it.
  bool Write(const void* bytes, uint32_t length, uint32_t* taken);

 private:
  NbxConnection(NbxBinding library, const HvJobInfo& job);

  NbxBinding library_;
  uint16_t address1_;
  uint16_t address2_;
  bool connected_ = false;
  bool documentStarted_ = false;
};

}  // namespace hv
