#include "zip_listing.h"

#include <algorithm>
#include <fstream>
#include <span>

#include "support/byte_order.h"
#include "zip/member_pattern.h"
#include "zip/zip_records.h"

namespace hvtool {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t HighestVersion = 20;
constexpr uint32_t HighestOldMethod = 6;  // stored, shrunk, reduced, imploded
constexpr uint32_t MethodDeflated = 8;

// The part of a file, or as much of it as there is.
Bytes ReadPart(std::ifstream& file, uint64_t from, std::size_t size) {
  Bytes bytes(size);
  file.clear();
  file.seekg(static_cast<std::streamoff>(from));
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
  return bytes;
}

// Where the end record is in the tail of an archive: the last one that the file's end fits, else
// the last one; the size of the tail when there is none.
std::size_t FindEndRecord(std::span<const uint8_t> tail) {
  std::size_t found = tail.size();
  for (std::size_t at = tail.size(); at-- > 0;) {
    const std::span<const uint8_t> here = tail.subspan(at);
    if (here.size() < hv::EndOfDirectorySize) continue;
    if (hv::LoadLe32(here.data()) != hv::EndOfDirectorySignature) continue;
    const uint32_t comment = hv::RecordField(here, hv::EndOfDirectory[hv::EndCommentLength]);
    if (comment == here.size() - hv::EndOfDirectorySize) return at;
    if (found == tail.size()) found = at;
  }
  return found;
}

const char* WhySkipped(std::span<const uint8_t> entry) {
  const auto field = [&](hv::DirectoryEntryField f) {
    return hv::RecordField(entry, hv::DirectoryEntry[f]);
  };
  const uint32_t method = field(hv::EntryMethod);
  if ((field(hv::EntryFlags) & hv::FlagEncrypted) != 0) return "it is encrypted";
  if (method > HighestOldMethod && method != MethodDeflated) {
    return "its compression method is not known";
  }
  return (field(hv::EntryVersionNeeded) & 0xFF) > HighestVersion ? "it needs a newer version"
                                                                 : nullptr;
}

}  // namespace

std::vector<ListedMember> ListMembers(const std::string& archive, const std::string& pattern) {
  std::vector<ListedMember> members;
  std::ifstream file(archive, std::ios::binary);
  file.seekg(0, std::ios::end);
  if (!file) return members;
  const auto size = static_cast<uint64_t>(file.tellg());
  const uint64_t tailAt =
      size - std::min<uint64_t>(size, hv::EndOfDirectorySize + hv::MaxCommentLength);
  const Bytes tail = ReadPart(file, tailAt, static_cast<std::size_t>(size - tailAt));
  const std::size_t end = FindEndRecord(tail);
  if (end == tail.size()) return members;
  const auto endField = [&](hv::EndOfDirectoryField f) {
    return hv::RecordField(std::span(tail).subspan(end), hv::EndOfDirectory[f]);
  };
  // Where it ends right before the end record, else where its offset says.
  const uint64_t endAt = tailAt + end;
  const uint64_t directorySize = endField(hv::EndDirectorySize);
  Bytes directory;
  for (const uint64_t start :
       {endAt - std::min(directorySize, endAt), uint64_t{endField(hv::EndDirectoryOffset)}}) {
    directory = ReadPart(file, start, static_cast<std::size_t>(endAt - std::min(start, endAt)));
    if (directory.size() >= hv::DirectoryEntrySize &&
        hv::LoadLe32(directory.data()) == hv::DirectoryEntrySignature) {
      break;
    }
  }

  const hv::MemberPattern wanted(pattern);
  std::span<const uint8_t> rest = directory;
  for (uint32_t left = endField(hv::EndEntries); left > 0; --left) {
    if (rest.size() < hv::DirectoryEntrySize) break;
    if (hv::LoadLe32(rest.data()) != hv::DirectoryEntrySignature) break;
    const auto field = [&](hv::DirectoryEntryField f) {
      return hv::RecordField(rest, hv::DirectoryEntry[f]);
    };
    const std::size_t nameSize = field(hv::EntryNameLength);
    const std::size_t entrySize = hv::DirectoryEntrySize + nameSize + field(hv::EntryExtraLength) +
                                  field(hv::EntryCommentLength);
    if (rest.size() < entrySize) break;
    const auto* const name = reinterpret_cast<const char*>(&rest[hv::DirectoryEntrySize]);
    if (pattern.empty() || wanted.Matches({name, nameSize})) {
      members.push_back(
          {std::string(name, nameSize), field(hv::EntryCompressedSize), WhySkipped(rest)});
    }
    rest = rest.subspan(entrySize);
  }
  return members;
}

}  // namespace hvtool
