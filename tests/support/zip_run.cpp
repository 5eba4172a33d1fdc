#include "support/zip_run.h"

namespace hvtest {
namespace fs = std::filesystem;

Tree ReadTree(const fs::path& folder) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).generic_string();
    if (entry.is_directory()) {
      tree[name + "/"] = "";
    } else {
      tree[name] = ReadFile(entry.path());
    }
  }
  return tree;
}

std::string Show(const Tree& tree) {
  std::string text;
  for (const auto& [name, bytes] : tree) {
    text += (text.empty() ? "" : " ") + name + (name.back() == '/' ? "" : "=" + bytes);
  }
  return text;
}

std::string Show(const ZipRun& run) {
  return std::to_string(run.code) + " " + Show(run.tree);
}

ZipRun Explode(std::string_view archive, const char* pattern, HvZipProgress progress) {
  const TestFolder folder;
  const std::string path = folder.Add("archive.zip", archive);
  const fs::path out = folder.Path() / "out";
  fs::create_directory(out);
  ZipRun run;
  {
    const ScopedCurrentFolder inside(out);
    run.code = HvZipExplode(path.c_str(), pattern, progress);
  }
  run.tree = ReadTree(out);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"archive.zip", "out"}));
  EXPECT_TRUE(ReadFile(path) == archive);
  return run;
}

}  // namespace hvtest
