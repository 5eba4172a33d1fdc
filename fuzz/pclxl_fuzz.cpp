// Any bytes as a PCL XL job: what is taken for its page is a run of the job, and the outcome does
// not depend on the pieces in which the job comes.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "pclxl/job_reader.h"

namespace {

class CollectedPage final : public hv::PclXlPage {
 public:
  bool Begin() override { return true; }
  bool Take(std::span<const uint8_t> bytes) override {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return true;
  }
  bool End(uint64_t length) override {
    if (length > bytes_.size()) std::abort();
    bytes_.resize(static_cast<std::size_t>(length));
    return true;
  }

  const std::vector<uint8_t>& Bytes() const { return bytes_; }

 private:
  std::vector<uint8_t> bytes_;
};

struct Outcome {
  hv::PclXlResult result = hv::PclXlOk;
  uint64_t offset = 0;
  std::vector<uint8_t> settings;
  std::vector<uint8_t> page;

  bool operator==(const Outcome&) const = default;
};

Outcome Read(std::span<const uint8_t> job, std::size_t piece) {
  std::size_t at = 0;
  CollectedPage page;
  hv::PclXlJobReader reader(
      [&](uint8_t* buffer, std::size_t size) {
        const std::size_t part = std::min({size, piece, job.size() - at});
        std::copy_n(job.begin() + static_cast<std::ptrdiff_t>(at), part, buffer);
        at += part;
        return part;
      },
      &page);
  Outcome outcome;
  outcome.result = reader.Read();
  outcome.offset = reader.LastOffset();
  if (outcome.result != hv::PclXlOk) return outcome;
  outcome.settings.assign(reader.Settings().begin(), reader.Settings().end());
  outcome.page = page.Bytes();
  return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::span<const uint8_t> job{data, size};
  const Outcome whole = Read(job, size + 1);
  if (whole.offset > size || whole.settings.size() > 255) std::abort();
  if (!(whole == Read(job, 1)) || !(whole == Read(job, 100))) std::abort();
  if (whole.result == hv::PclXlOk &&
      std::search(job.begin(), job.end(), whole.page.begin(), whole.page.end()) == job.end() &&
      !whole.page.empty()) {
    std::abort();
  }
  return 0;
}
