// Any bytes as an INI file, read and edited beside a plain model of one; the names are those that the
// file holds.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/ini_model.h"
#include "support/run_memory.h"

namespace {

using hvtest::IniModel;
using hvtest::MaybeText;

void Check(bool condition) {
  if (!condition) std::abort();
}

const char* TextOrNull(const MaybeText& text) {
  return text ? text->c_str() : nullptr;
}

struct Names {
  std::string section = "s";
  std::string key = "k";
};

// The last ones of the file.
Names NamesOf(const IniModel& model) {
  Names names;
  for (const std::string& line : model.Lines()) {
    const std::size_t equals = line.find('=');
    if (line[0] == '[' && line.back() == ']') names.section = line.substr(1, line.size() - 2);
    if (line[0] != '[' && equals != line.npos) names.key = line.substr(0, equals);
  }
  return names;
}

void CheckLines(const HvIniHandle& ini, const IniModel& model) {
  const HvIniLine* line = ini.lines->next;
  for (const std::string& expected : model.Lines()) {
    Check(line != nullptr && expected == line->text);
    line = line->next;
  }
  Check(line == nullptr && ini.maxLineLength == model.MaxLineLength());
}

void CheckRead(HvIniHandle* ini, IniModel* model, const MaybeText& section, const MaybeText& key) {
  Check(HvIniRead(ini, TextOrNull(section), TextOrNull(key)) ==
        model->Read(section, key).value_or(""));
}

void CheckCopy(HvIniHandle* ini, const IniModel& model, const Names& names, std::size_t size) {
  const IniModel::Copy expected = model.Read2(names.section, names.key, std::nullopt, size);
  std::string buffer(size, '#');
  uint32_t count = 0;
  Check(HvIniRead2(ini, names.section.c_str(), names.key.c_str(), nullptr, buffer.data(),
                   static_cast<uint32_t>(size), &count) == expected.code);
  Check(buffer.substr(0, count) == expected.text);
}

// The edits of a caller; each leaves the lines that it leaves in the model.
void Edit(HvIniHandle* ini, IniModel* model, const Names& names) {
  const char* const section = names.section.c_str();
  const char* const key = names.key.c_str();
  Check((HvIniWrite(ini, section, key, "v") != 0) ==
        model->Write(names.section, names.key, "v", false));
  CheckLines(*ini, *model);
  Check((HvIniWriteAll(ini, section, "new", "w") != 0) ==
        model->Write(names.section, "new", "w", true));
  CheckLines(*ini, *model);
  HvIniDelete(ini, section, key, nullptr);
  model->Delete(names.section, names.key, std::nullopt);
  CheckLines(*ini, *model);
  HvIniDelete(ini, section, nullptr, nullptr);
  model->Delete(names.section, std::nullopt, std::nullopt);
  CheckLines(*ini, *model);
}

// The same without looking at it, while memory runs out.
void EditWithoutMemory(const std::string& path, const Names& names, const uint8_t* data,
                       std::size_t size) {
  const hvfuzz::RunMemory memory(data, size);
  HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
  if (ini == nullptr) return;
  HvIniRead(ini, names.section.c_str(), names.key.c_str());
  HvIniWrite(ini, names.section.c_str(), names.key.c_str(), "v");
  HvIniWriteAll(ini, names.section.c_str(), "new", "w");
  HvIniDelete(ini, names.section.c_str(), names.key.c_str(), "v");
  HvIniClose(ini);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  // A NUL ends a line for the library alone.
  if (bytes.find('\0') != bytes.npos) return 0;
  for (const uint32_t mode : {INI_OPEN_READ, INI_OPEN_UPDATE}) {
    const std::string path = hvfuzz::WriteInput("a.ini", data, size);
    IniModel model(bytes, mode == INI_OPEN_READ);
    const Names names = NamesOf(model);
    HvIniHandle* const ini = HvIniOpen2(path.c_str(), mode);
    CheckLines(*ini, model);
    CheckRead(ini, &model, names.section, names.key);
    CheckRead(ini, &model, names.section, std::nullopt);
    CheckRead(ini, &model, std::nullopt, names.key);
    CheckRead(ini, &model, std::nullopt, std::nullopt);
    for (const std::size_t room : {1U, 5U, 2000U}) CheckCopy(ini, model, names, room);
    Edit(ini, &model, names);
    Check(HvIniClose(ini) == 1);
    std::ifstream file(path, std::ios::binary);
    const std::string written{std::istreambuf_iterator<char>(file), {}};
    Check(written == model.Bytes());
    EditWithoutMemory(path, names, data, size);
  }
  return 0;
}
