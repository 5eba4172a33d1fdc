#include "config/quick_setup_file.h"

#include <limits>
#include <new>
#include <utility>

#include "api/caller_memory.h"
#include "api/low_file.h"
#include "support/byte_order.h"
#include "support/field_table.h"

namespace hv {
namespace {

constexpr uint32_t ReadMode = 4;  // of LowFileOpen
constexpr uint16_t Magic = 'Q' | 'S' << 8;
constexpr uint16_t ChecksumWord = 2;
constexpr std::size_t BlockPrefixSize = 6;
constexpr std::size_t HeaderSize = sizeof(HvQsfHandle::header);

enum HeaderField : uint8_t {
  HeaderMagic,
  HeaderChecksum,
  HeaderFileType,
  HeaderMajor,
  HeaderMinor,
  HeaderUnread1,
  HeaderOffset1,
  HeaderCount1,
  HeaderOffset2,
  HeaderCount2,
  HeaderOffset5,
  HeaderCount5,
  HeaderUnread2
};

constexpr PackedField HeaderFields[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "magic"},
    {2, 2, ByteOrder::Little, Sign::Unsigned, "checksum"},
    {4, 1, ByteOrder::Little, Sign::Unsigned, "file type"},
    {5, 1, ByteOrder::Little, Sign::Unsigned, "version, major"},
    {6, 1, ByteOrder::Little, Sign::Unsigned, "version, minor"},
    {7, 37, ByteOrder::Little, Sign::Unsigned, "not read"},
    {44, 4, ByteOrder::Little, Sign::Unsigned, "offset of block 1"},
    {48, 2, ByteOrder::Little, Sign::Unsigned, "entries in block 1"},
    {50, 4, ByteOrder::Little, Sign::Unsigned, "offset of block 2"},
    {54, 2, ByteOrder::Little, Sign::Unsigned, "entries in block 2"},
    {56, 4, ByteOrder::Little, Sign::Unsigned, "offset of block 5"},
    {60, 2, ByteOrder::Little, Sign::Unsigned, "entries in block 5"},
    {62, 12, ByteOrder::Little, Sign::Unsigned, "not read"},
};
static_assert(IsGapless(HeaderFields) && RecordSize(HeaderFields) == HeaderSize);
static_assert(std::size(HeaderFields) == HeaderUnread2 + 1);

static_assert(sizeof(LowFileRecord) == sizeof(HvQsfHandle::file));
LowFileRecord* FileOf(HvQsfHandle* setup) {
  return std::launder(reinterpret_cast<LowFileRecord*>(setup->file));
}

int64_t FieldOf(const HvQsfHandle& setup, HeaderField field) {
  return ReadField(setup.header, HeaderFields[field]);
}

bool IsVersion(const HvQsfHandle& setup, int64_t major, int64_t minor) {
  return FieldOf(setup, HeaderMajor) == major && FieldOf(setup, HeaderMinor) == minor;
}

uint32_t CheckHeader(const HvQsfHandle& setup, uint8_t fileType) {
  if (FieldOf(setup, HeaderFileType) != fileType) return HV_UNKNOWN_MODEL;
  if (FieldOf(setup, HeaderMagic) != Magic) return HV_WRONG_LANGUAGE;
  if (FieldOf(setup, HeaderMajor) > 1 || FieldOf(setup, HeaderMinor) > 1) return HV_WRONG_LANGUAGE;
  if (IsVersion(setup, 1, 0) && FieldOf(setup, HeaderCount1) == 0) return HV_WRONG_LANGUAGE;
  return HV_OK;
}

// Where a block lies in the file, and its number of entries.
struct Block {
  int64_t begin;
  int64_t end;
  int64_t count;
};

Block BlockOf(const HvQsfHandle& setup, uint32_t number) {
  const int64_t offset2 = FieldOf(setup, HeaderOffset2);
  const int64_t offset5 = FieldOf(setup, HeaderOffset5);
  switch (number) {
    case 1:
      return {FieldOf(setup, HeaderOffset1), offset2 == 0 ? setup.fileSize : offset2,
              FieldOf(setup, HeaderCount1)};
    case 2:
      return {offset2, IsVersion(setup, 1, 0) ? setup.fileSize : offset5,
              FieldOf(setup, HeaderCount2)};
    default:
      return {offset5, setup.fileSize, FieldOf(setup, HeaderCount5)};
  }
}

}  // namespace

void QuickSetupCloser::operator()(HvQsfHandle* handle) const {
  LowFileClose(FileOf(handle));
  delete handle;
}

uint32_t OpenQuickSetup(const char* path, uint8_t fileType, QuickSetup* setup) {
  LowFileRecord opened;
  opened.openMode = ReadMode;
  auto handle = std::make_unique<HvQsfHandle>();
  LowFileOpen(path, &opened);
  if (opened.error != LowFileOk) return opened.error;
  LowFileRecord* const file = new (handle->file) LowFileRecord(opened);
  QuickSetup owner(handle.release());

  const int64_t got = LowFileRead(owner->header, HeaderSize, file);
  if (got != int64_t{HeaderSize}) return HV_CANNOT_OPEN;
  if (const uint32_t code = CheckHeader(*owner, fileType); code != HV_OK) return code;
  const uint16_t sum = FileWordChecksum(ChecksumWord, file);
  if (file->error != LowFileOk) return file->error;
  if (sum != FieldOf(*owner, HeaderChecksum)) return HV_BAD_CHECKSUM;
  // Offsets have 32 bits, so that a larger file cannot be positioned at its end.
  const int64_t size = LowFileSeek(0, platform::LowOrigin::End, file);
  if (size < 0 || size > std::numeric_limits<uint32_t>::max()) return HV_CANNOT_OPEN;
  owner->fileSize = static_cast<uint32_t>(size);
  *setup = std::move(owner);
  return HV_OK;
}

uint32_t ReadQuickSetupBlock(HvQsfHandle* handle, uint32_t block, uint8_t** data, uint16_t* count) {
  const Block range = BlockOf(*handle, block);
  if (range.count == 0) return HV_OK;
  if (range.begin > range.end || range.end > handle->fileSize) return HV_UNUSABLE_FILE;
  const std::size_t prefixSize = IsVersion(*handle, 1, 1) ? BlockPrefixSize : 0;
  const std::size_t size = static_cast<std::size_t>(range.end - range.begin);
  // On a 32-bit system there can be less memory than file.
  if (size > std::numeric_limits<std::size_t>::max() - prefixSize) return HV_NO_MEMORY;

  LowFileRecord* const file = FileOf(handle);
  if (LowFileSeek(range.begin, platform::LowOrigin::Start, file) < 0) return file->error;
  CallerMemory<uint8_t> memory(static_cast<uint8_t*>(AllocateForCaller(prefixSize + size)));
  if (memory == nullptr) return HV_NO_MEMORY;
  if (prefixSize != 0) {
    StoreLe32(memory.get(), static_cast<uint32_t>(size));
    StoreBe16(memory.get() + 4, static_cast<uint16_t>(range.count));
  }
  const int64_t got = LowFileRead(memory.get() + prefixSize, size, file);
  if (got < 0) return file->error;
  if (static_cast<std::size_t>(got) != size) return HV_UNUSABLE_FILE;
  *count = static_cast<uint16_t>(range.count);
  *data = memory.release();
  return HV_OK;
}

}  // namespace hv
