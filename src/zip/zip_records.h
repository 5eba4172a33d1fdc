// The packed records of a zip archive, in the order of the tables of the zip application note
// (APPNOTE.TXT, "General Format of a .ZIP file"). All numbers are little-endian.
#pragma once

#include <cstdint>
#include <span>

#include "support/field_table.h"

namespace hv {

constexpr uint32_t LocalHeaderSignature = 0x04034B50;     // "PK" 3 4
constexpr uint32_t DirectoryEntrySignature = 0x02014B50;  // "PK" 1 2
constexpr uint32_t EndOfDirectorySignature = 0x06054B50;  // "PK" 5 6

constexpr PackedField LocalHeader[] = {
    {0, 4, ByteOrder::Little, Sign::Unsigned, "local file header signature"},
    {4, 2, ByteOrder::Little, Sign::Unsigned, "version needed to extract"},
    {6, 2, ByteOrder::Little, Sign::Unsigned, "general purpose bit flag"},
    {8, 2, ByteOrder::Little, Sign::Unsigned, "compression method"},
    {10, 2, ByteOrder::Little, Sign::Unsigned, "last mod file time"},
    {12, 2, ByteOrder::Little, Sign::Unsigned, "last mod file date"},
    {14, 4, ByteOrder::Little, Sign::Unsigned, "crc-32"},
    {18, 4, ByteOrder::Little, Sign::Unsigned, "compressed size"},
    {22, 4, ByteOrder::Little, Sign::Unsigned, "uncompressed size"},
    {26, 2, ByteOrder::Little, Sign::Unsigned, "file name length"},
    {28, 2, ByteOrder::Little, Sign::Unsigned, "extra field length"},
};
enum LocalHeaderField : uint8_t {
  LocalSignature,
  LocalVersionNeeded,
  LocalFlags,
  LocalMethod,
  LocalTime,
  LocalDate,
  LocalCrc,
  LocalCompressedSize,
  LocalUncompressedSize,
  LocalNameLength,
  LocalExtraLength,
};
constexpr std::size_t LocalHeaderSize = 30;
static_assert(IsGapless(LocalHeader) && RecordSize(LocalHeader) == LocalHeaderSize);

constexpr PackedField DirectoryEntry[] = {
    {0, 4, ByteOrder::Little, Sign::Unsigned, "central file header signature"},
    {4, 2, ByteOrder::Little, Sign::Unsigned, "version made by"},
    {6, 2, ByteOrder::Little, Sign::Unsigned, "version needed to extract"},
    {8, 2, ByteOrder::Little, Sign::Unsigned, "general purpose bit flag"},
    {10, 2, ByteOrder::Little, Sign::Unsigned, "compression method"},
    {12, 2, ByteOrder::Little, Sign::Unsigned, "last mod file time"},
    {14, 2, ByteOrder::Little, Sign::Unsigned, "last mod file date"},
    {16, 4, ByteOrder::Little, Sign::Unsigned, "crc-32"},
    {20, 4, ByteOrder::Little, Sign::Unsigned, "compressed size"},
    {24, 4, ByteOrder::Little, Sign::Unsigned, "uncompressed size"},
    {28, 2, ByteOrder::Little, Sign::Unsigned, "file name length"},
    {30, 2, ByteOrder::Little, Sign::Unsigned, "extra field length"},
    {32, 2, ByteOrder::Little, Sign::Unsigned, "file comment length"},
    {34, 2, ByteOrder::Little, Sign::Unsigned, "disk number start"},
    {36, 2, ByteOrder::Little, Sign::Unsigned, "internal file attributes"},
    {38, 4, ByteOrder::Little, Sign::Unsigned, "external file attributes"},
    {42, 4, ByteOrder::Little, Sign::Unsigned, "relative offset of local header"},
};
enum DirectoryEntryField : uint8_t {
  EntrySignature,
  EntryVersionMadeBy,
  EntryVersionNeeded,
  EntryFlags,
  EntryMethod,
  EntryTime,
  EntryDate,
  EntryCrc,
  EntryCompressedSize,
  EntryUncompressedSize,
  EntryNameLength,
  EntryExtraLength,
  EntryCommentLength,
  EntryDisk,
  EntryInternalAttributes,
  EntryExternalAttributes,
  EntryLocalOffset,
};
constexpr std::size_t DirectoryEntrySize = 46;
static_assert(IsGapless(DirectoryEntry) && RecordSize(DirectoryEntry) == DirectoryEntrySize);

constexpr PackedField EndOfDirectory[] = {
    {0, 4, ByteOrder::Little, Sign::Unsigned, "end of central dir signature"},
    {4, 2, ByteOrder::Little, Sign::Unsigned, "number of this disk"},
    {6, 2, ByteOrder::Little, Sign::Unsigned, "disk with the central directory"},
    {8, 2, ByteOrder::Little, Sign::Unsigned, "entries on this disk"},
    {10, 2, ByteOrder::Little, Sign::Unsigned, "entries in the central directory"},
    {12, 4, ByteOrder::Little, Sign::Unsigned, "size of the central directory"},
    {16, 4, ByteOrder::Little, Sign::Unsigned, "offset of the central directory"},
    {20, 2, ByteOrder::Little, Sign::Unsigned, "zip file comment length"},
};
enum EndOfDirectoryField : uint8_t {
  EndSignature,
  EndDisk,
  EndDirectoryDisk,
  EndEntriesOnDisk,
  EndEntries,
  EndDirectorySize,
  EndDirectoryOffset,
  EndCommentLength,
};
constexpr std::size_t EndOfDirectorySize = 22;
static_assert(IsGapless(EndOfDirectory) && RecordSize(EndOfDirectory) == EndOfDirectorySize);

// The longest comment, and so the most that may follow the end record.
constexpr std::size_t MaxCommentLength = 65535;

// Bits of the general purpose bit flag.
constexpr uint32_t FlagEncrypted = 0x0001;
constexpr uint32_t FlagLargeWindow = 0x0002;     // imploded: 8 KB instead of 4 KB
constexpr uint32_t FlagLiteralTree = 0x0004;     // imploded: literals are coded too
constexpr uint32_t FlagDataDescriptor = 0x0008;  // CRC and sizes follow the data

// A field of a record; fields are at most 32 bits wide and unsigned.
inline uint32_t RecordField(std::span<const uint8_t> record, const PackedField& field) {
  return static_cast<uint32_t>(ReadField(record, field));
}

}  // namespace hv
