#include "replies/job_account.h"

#include <cstddef>

#include "api/caller_memory.h"
#include "replies/reply_record.h"

namespace hv {
namespace {

using enum ReplyStore;

constexpr ReplyRow J1Rows[] = {
    {1, Integer, offsetof(HvJobAccountJob, j1Item1)},
    {2, Integer, offsetof(HvJobAccountJob, j1Item2)},
    {3, Integer, offsetof(HvJobAccountJob, j1Item3)},
    {4, Integer, offsetof(HvJobAccountJob, j1Item4)},
    {5, Integer, offsetof(HvJobAccountJob, j1Item5)},
    {6, Integer, offsetof(HvJobAccountJob, j1Item6)},
    {7, FixedText, offsetof(HvJobAccountJob, j1Item7), sizeof(HvJobAccountJob::j1Item7)},
    {8, Integer, offsetof(HvJobAccountJob, j1Item8)},
    {9, Integer, offsetof(HvJobAccountJob, j1Item9)},
    {10, Integer, offsetof(HvJobAccountJob, j1Item10)},
    {11, FixedText, offsetof(HvJobAccountJob, j1Item11), sizeof(HvJobAccountJob::j1Item11)},
};

constexpr ReplyRow J2Rows[] = {
    {1, FixedText, offsetof(HvJobAccountJob, j2Item1), sizeof(HvJobAccountJob::j2Item1)},
    {2, FixedText, offsetof(HvJobAccountJob, j2Item2), sizeof(HvJobAccountJob::j2Item2)},
    {3, FixedText, offsetof(HvJobAccountJob, j2Item3), sizeof(HvJobAccountJob::j2Item3)},
    {4, Integer, offsetof(HvJobAccountJob, j2Item4)},
    {5, Integer, offsetof(HvJobAccountJob, j2Item5)},
    {6, Integer, offsetof(HvJobAccountJob, j2Item6)},
    {7, Integer, offsetof(HvJobAccountJob, j2Item7)},
    {8, Integer, offsetof(HvJobAccountJob, j2Item8)},
    {9, Integer, offsetof(HvJobAccountJob, j2Item9)},
    {10, Integer, offsetof(HvJobAccountJob, j2Item10)},
};

constexpr ReplyRow D1Rows[] = {
    {1, Integer, offsetof(HvJobAccountDevice, d1Item1)},
};

constexpr ReplyRow D2Rows[] = {
    {1, Integer, offsetof(HvJobAccountDevice, d2Item1)},
    {2, Integer, offsetof(HvJobAccountDevice, d2Item2)},
    {3, Integer, offsetof(HvJobAccountDevice, d2Item3)},
    {4, Integer, offsetof(HvJobAccountDevice, d2Item4)},
    {5, Integer, offsetof(HvJobAccountDevice, d2Item5)},
    {6, FixedText, offsetof(HvJobAccountDevice, d2Item6), sizeof(HvJobAccountDevice::d2Item6)},
    {7, Integer, offsetof(HvJobAccountDevice, d2Item7)},
    {8, FixedText, offsetof(HvJobAccountDevice, d2Item8), sizeof(HvJobAccountDevice::d2Item8)},
};

constexpr ReplyRow D3Rows[] = {
    {1, Integer, offsetof(HvJobAccountDevice, d3Item1)},
    {2, Integer, offsetof(HvJobAccountDevice, d3Item2)},
    {3, Integer, offsetof(HvJobAccountDevice, d3Item3)},
    {4, Integer, offsetof(HvJobAccountDevice, d3Item4)},
    {5, Integer, offsetof(HvJobAccountDevice, d3Item5)},
};

constexpr ReplyRow JobRows[] = {
    {1, Level, 0, 0, J1Rows},
    {2, Level, 0, 0, J2Rows},
};

constexpr ReplyRow DeviceRows[] = {
    {1, Level, 0, 0, D1Rows},
    {2, Level, 0, 0, D2Rows},
    {3, Level, 0, 0, D3Rows},
};

constexpr ReplyRow BlockRows[] = {
    {1, Level},
    {2, Block, offsetof(HvJobAccount, jobBlock), sizeof(HvJobAccountJob), JobRows},
    {3, Block, offsetof(HvJobAccount, deviceBlock), sizeof(HvJobAccountDevice), DeviceRows},
};

constexpr ReplyRow AlertRows[] = {
    {1, Level, 0, 0, BlockRows},
};

}  // namespace

HvJobAccount* ParseJobAccount(const uint8_t* reply) {
  ReplyReader reader(reply);
  auto* const record = static_cast<HvJobAccount*>(AllocateForCaller(sizeof(HvJobAccount)));
  if (record == nullptr) return nullptr;
  while (!reader.AtEnd()) {
    const std::size_t before = reader.Position();
    ReadReplyItem(&reader, AlertRows, record);
    if (reader.Position() == before) break;
  }
  return record;
}

void FreeJobAccount(HvJobAccount* record) {
  if (record != nullptr) ClearReplyRecord(AlertRows, record);
  ReleaseForCaller(record);
}

}  // namespace hv
