#include "config/record_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "config/record_reader.h"
#include "platform/stream.h"
#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr int64_t NoRecord = -1;

// An open record file and the place of its current record.
class RecordFile {
 public:
  RecordFile(std::unique_ptr<platform::Stream> file, const RecordLayout& layout)
      : file_(std::move(file)), layout_(layout), buffer_(layout.recordSize) {}

  bool Close() { return file_->Close(); }
  std::span<const uint8_t> Record() const { return buffer_; }

  // The first record whose key begins with `prefix`. Read, Malformed, or Ended when there is none;
  // without a record there is no current one.
  RecordResult First(std::string_view prefix) {
    current_ = NoRecord;
    if (!file_->Seek(0)) return RecordResult::Malformed;
    int64_t offset = NoRecord;
    for (;;) {
      const RecordResult result = ReadRecord(file_.get(), layout_, buffer_, &offset);
      if (result != RecordResult::Read) return result;
      if (StartsWith(Key(), prefix)) break;
    }
    current_ = offset;
    return RecordResult::Read;
  }

  bool HasCurrent() const { return current_ != NoRecord; }

  // The record after the current one; at the end of the file the current one stays.
  RecordResult Next() {
    int64_t offset = NoRecord;
    RecordResult result = RecordResult::Malformed;
    if (file_->Seek(current_)) result = ReadRecord(file_.get(), layout_, buffer_, &offset);
    if (result == RecordResult::Read) {
      result = ReadRecord(file_.get(), layout_, buffer_, &offset);
      if (result == RecordResult::Read) current_ = offset;
    }
    if (result == RecordResult::Malformed) current_ = NoRecord;
    return result;
  }

 private:
  std::string_view Key() const {
    const KeyDefinition& key = layout_.keys.front();
    return FixedText(reinterpret_cast<const char*>(&buffer_[key.offset]), key.length);
  }

  std::unique_ptr<platform::Stream> file_;
  const RecordLayout& layout_;
  std::vector<uint8_t> buffer_;
  int64_t current_ = NoRecord;
};

// The open files of the process. A call holds the lock from start to end, so that no file is closed
// while another thread reads it.
std::mutex slotMutex;
std::array<RecordFile*, 4> slots;

// The slot of a handle, or NULL when it is not open. The lock is held.
RecordFile** OpenSlot(int16_t handle) {
  const bool isSlot = handle >= 0 && static_cast<std::size_t>(handle) < slots.size();
  if (!isSlot || slots[static_cast<std::size_t>(handle)] == nullptr) return nullptr;
  return &slots[static_cast<std::size_t>(handle)];
}

// Hands out what a step has read; `atEnd` is the code for the end of the file.
int32_t Deliver(RecordResult result, int32_t atEnd, const RecordFile& file,
                HvCommandRecord* record) {
  if (result == RecordResult::Malformed) return DAT_FAILED;
  if (result == RecordResult::Ended) return atEnd;
  std::memcpy(record, file.Record().data(), sizeof *record);
  return 0;
}

}  // namespace

int32_t OpenRecordFile(const char* path) {
  const std::lock_guard lock(slotMutex);
  const auto slot = std::find(slots.begin(), slots.end(), nullptr);
  if (slot == slots.end()) return DAT_FAILED;
  std::unique_ptr<platform::Stream> file = platform::OpenStream(path, "r");
  if (file == nullptr) return DAT_CANNOT_OPEN;
  *slot = std::make_unique<RecordFile>(std::move(file), CommandRecordLayout).release();
  return static_cast<int32_t>(slot - slots.begin());
}

int32_t CloseRecordFile(int16_t handle) {
  const std::lock_guard lock(slotMutex);
  RecordFile** const slot = OpenSlot(handle);
  if (slot == nullptr) return DAT_BAD_HANDLE;
  const std::unique_ptr<RecordFile> file(std::exchange(*slot, nullptr));
  return file->Close() ? 0 : DAT_FAILED;
}

int32_t GetFirstRecord(int16_t handle, std::string_view keyPrefix, HvCommandRecord* record) {
  const std::lock_guard lock(slotMutex);
  RecordFile** const slot = OpenSlot(handle);
  if (slot == nullptr) return DAT_BAD_HANDLE;
  return Deliver((*slot)->First(keyPrefix), DAT_NO_RECORD, **slot, record);
}

int32_t GetNextRecord(int16_t handle, HvCommandRecord* record) {
  const std::lock_guard lock(slotMutex);
  RecordFile** const slot = OpenSlot(handle);
  if (slot == nullptr) return DAT_BAD_HANDLE;
  if (!(*slot)->HasCurrent()) return DAT_NO_RECORD;
  return Deliver((*slot)->Next(), DAT_END_OF_FILE, **slot, record);
}

int32_t CountRecords(const char* path, std::string_view keyPrefix, HvCommandRecord* record,
                     uint16_t* count) {
  const int32_t handle = OpenRecordFile(path);
  if (handle < 0) return DAT_CANNOT_OPEN;
  const int16_t slot = static_cast<int16_t>(handle);
  const auto matches = [&] {
    return StartsWith(FixedText(record->szKey, sizeof record->szKey), keyPrefix);
  };
  for (int32_t code = GetFirstRecord(slot, keyPrefix, record); code == 0 && matches();
       code = GetNextRecord(slot, record)) {
    ++*count;
  }
  return CloseRecordFile(slot);
}

int32_t CountRecordsByLetter(const char* path, uint16_t* counts) {
  // A count by the first letter of the key, and for S as the first one six by the second.
  constexpr std::string_view Letters = "AFGPST";
  const int32_t handle = OpenRecordFile(path);
  if (handle < 0) return DAT_CANNOT_OPEN;
  const int16_t slot = static_cast<int16_t>(handle);
  HvCommandRecord record;
  for (int32_t code = GetFirstRecord(slot, "", &record); code == 0;
       code = GetNextRecord(slot, &record)) {
    const char first = ToUpper(record.szKey[0]);
    const std::size_t byFirst = Letters.find(first);
    if (byFirst != Letters.npos) ++counts[byFirst];
    const std::size_t bySecond = Letters.find(ToUpper(record.szKey[1]));
    if (first == 'S' && bySecond != Letters.npos) ++counts[Letters.size() + bySecond];
  }
  return CloseRecordFile(slot);
}

}  // namespace hv
