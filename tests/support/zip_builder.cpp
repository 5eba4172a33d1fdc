#include "support/zip_builder.h"

namespace hvtest {
namespace {

void Add16(std::string& bytes, uint32_t value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8 & 0xFF);
}

void Add32(std::string& bytes, std::size_t value) {
  Add16(bytes, static_cast<uint32_t>(value & 0xFFFF));
  Add16(bytes, static_cast<uint32_t>(value >> 16 & 0xFFFF));
}

// From "version needed" to "extra field length", which both headers share.
void AddCommonFields(std::string& bytes, const ZipMember& member) {
  Add16(bytes, 20);
  Add16(bytes, member.flags);
  Add16(bytes, member.method);
  Add16(bytes, member.time);
  Add16(bytes, member.date);
  Add32(bytes, member.crc);
  Add32(bytes, member.data.size());
  Add32(bytes, member.size);
  Add32(bytes, member.name.size());  // and no extra field
}

}  // namespace

void ZipArchive::Set16(std::size_t at, uint16_t value) {
  bytes[at] = static_cast<char>(value & 0xFF);
  bytes[at + 1] = static_cast<char>(value >> 8);
}

uint32_t SlowCrc32(std::string_view bytes) {
  uint32_t crc = 0xFFFFFFFF;
  for (const char c : bytes) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (0xEDB88320 & (0 - (crc & 1)));
  }
  return ~crc;
}

ZipMember Packed(std::string_view name, std::string_view content, uint16_t method, std::string data,
                 uint16_t flags) {
  ZipMember member;
  member.name = name;
  member.data = std::move(data);
  member.method = method;
  member.flags = flags;
  member.crc = SlowCrc32(content);
  member.size = static_cast<uint32_t>(content.size());
  return member;
}

ZipMember Stored(std::string_view name, std::string_view content) {
  return Packed(name, content, 0, std::string(content));
}

ZipArchive BuildZip(const std::vector<ZipMember>& members, std::string_view comment) {
  ZipArchive zip;
  std::string& bytes = zip.bytes;
  for (const ZipMember& member : members) {
    zip.locals.push_back(bytes.size());
    bytes += "PK\3\4";
    AddCommonFields(bytes, member);
    bytes += member.name + member.data;
  }
  const std::size_t directory = bytes.size();
  for (std::size_t i = 0; i < members.size(); ++i) {
    zip.entries.push_back(bytes.size());
    bytes += "PK\1\2";
    Add16(bytes, 20);
    AddCommonFields(bytes, members[i]);
    Add32(bytes, 0);  // comment length, disk
    Add16(bytes, 0);
    Add32(bytes, 0);
    Add32(bytes, zip.locals[i]);
    bytes += members[i].name;
  }
  zip.end = bytes.size();
  bytes += "PK\5\6";
  Add32(bytes, 0);  // disks
  Add16(bytes, static_cast<uint32_t>(members.size()));
  Add16(bytes, static_cast<uint32_t>(members.size()));
  Add32(bytes, zip.end - directory);
  Add32(bytes, directory);
  Add16(bytes, static_cast<uint32_t>(comment.size()));
  bytes += comment;
  return zip;
}

}  // namespace hvtest
