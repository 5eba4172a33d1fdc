#include "fonts/font_search.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "api/file_operations.h"
#include "fonts/directory_walk.h"
#include "fonts/font_file.h"
#include "fonts/font_index.h"
#include "fonts/font_information.h"
#include "fonts/font_paths.h"
#include "fonts/pcm_reader.h"
#include "fonts/pfm_reader.h"
#include "support/fixed_text.h"
#include "support/path_text.h"

namespace hv {
namespace {

constexpr uint32_t FirstClassOfAll = 5;

constexpr uint32_t Types(std::initializer_list<int32_t> fontTypes) {
  uint32_t bits = 0;
  for (const int32_t fontType : fontTypes) bits |= FontTypeBit(fontType);
  return bits;
}

constexpr uint32_t ScalableTypes =
    Types({FONT_TYPE_PCL_BOUND, FONT_TYPE_PCL_UNBOUND, FONT_TYPE_PCL_TRUETYPE});

struct KindRow {
  uint32_t fontKind;
  uint32_t fontTypes;
};
constexpr KindRow KindRows[] = {
    {FONT_KIND_PCL, Types({8, 9, 11, 13, 15, 17, 18, 20})},
    {FONT_KIND_PCL_CONTOUR, Types({11, 17})},
    {FONT_KIND_PCL_PLAIN, Types({9, 13, 17})},
    {FONT_KIND_PCL_STANDARD, Types({8, 9, 13, 15, 17, 18, 20})},
    {FONT_KIND_ANY, ~uint32_t{0}},
    {FONT_KIND_PCL_WINDOWS, Types({8, 9, 13, 15, 17, 18, 20, FONT_TYPE_PFM, FONT_TYPE_PCM})},
};

// The kinds whose fonts an index may list.
constexpr uint32_t IndexedKinds[] = {10, 12, 14, 16, 17, 18, 20, 26, 27};

uint32_t TypesOfKind(uint32_t fontKind) {
  for (const KindRow& row : KindRows) {
    if (row.fontKind == fontKind) return row.fontTypes;
  }
  return FontTypeBit(static_cast<int32_t>(fontKind));
}

// The metrics file of a scalable font that no index lists.
std::string ScalableMetricsPath(const std::string& fontPath) {
  const std::size_t name = FileNameStart(fontPath);
  std::string path = fontPath.substr(0, name) + fontPath.substr(name, 3) + "0000S.TFM";
  if (path.size() >= sizeof(CompanionField)) path.clear();
  return path;
}

class FontSearch {
 public:
  FontSearch(const FontQuery& query, ResourceList* list)
      : query_(query), list_(list), fontTypes_(TypesOfKind(query.fontKind)) {}

  void Run();

 private:
  // A file of the walk, or an entry of the index.
  struct Candidate {
    const std::string& path;
    const FoundFile* listed;
    const FontIndexEntry* entry;
  };

  void CountFiles();
  uint32_t Percent() const;
  bool Try(const Candidate& candidate);
  bool MayMatch(const std::string& path) const;
  bool FindMetrics(const Candidate& candidate, HvFontInfo* info) const;
  bool MatchesClass(uint32_t fontClass) const {
    return query_.classFilter >= FirstClassOfAll || query_.classFilter == fontClass;
  }
  bool MatchesKind(const Candidate& candidate, const HvFontInfo& info) const;
  static bool Exists(const Candidate& candidate, const std::string& path);

  const FontQuery& query_;
  ResourceList* list_;
  uint32_t fontTypes_;
  uint64_t seen_ = 0;
  uint64_t total_ = 0;
  std::unordered_set<std::string_view> names_;  // in the details of the list
};

void FontSearch::CountFiles() {
  WalkFiles(query_.directory, query_.recurse, [this](const FoundFile&) {
    ++total_;
    return true;
  });
}

// Files may have come since they were counted.
uint32_t FontSearch::Percent() const {
  return static_cast<uint32_t>(std::min<uint64_t>(seen_ * 100 / total_, 100));
}

// Whether the name leaves room for a font that is looked for, so that the file need be read.
bool FontSearch::MayMatch(const std::string& path) const {
  const FontPossibility possible = PossibilityOf(path);
  return (possible.fontTypes & fontTypes_) != 0 && MatchesClass(possible.fontClass);
}

bool FontSearch::Exists(const Candidate& candidate, const std::string& path) {
  if (path.empty()) return false;
  return candidate.listed != nullptr ? candidate.listed->folder->HasFileOf(path)
                                     : FileExists(path.c_str());
}

// Names the metrics of a scalable font; false for a font that is left out for want of them.
bool FontSearch::FindMetrics(const Candidate& candidate, HvFontInfo* info) const {
  std::string metrics;
  bool found = false;
  if (candidate.entry != nullptr) {
    const FontIndexEntry& entry = *candidate.entry;
    if (!entry.symbolSet.empty()) SetFixedText(info->symbolSet, entry.symbolSet);
    info->memoryNeeded = entry.memoryNeeded;
    metrics = entry.metricsPath;
    found = !metrics.empty() && FileExists(metrics.c_str());
  } else {
    metrics = ScalableMetricsPath(candidate.path);
    found = Exists(candidate, metrics);
  }
  if (found) {
    SetFixedText(info->companionPath1, metrics);
    SetFixedText(info->companionPath2, metrics);
    return true;
  }
  if (query_.companionMode == FONT_COMPANIONS_METRICS) return false;
  if (query_.companionMode != FONT_COMPANIONS_WINDOWS) return true;
  const std::string pfm = ReplaceExtension(candidate.path, "PFM");
  if (pfm.size() >= sizeof(CompanionField) || !Exists(candidate, pfm)) return false;
  SetFixedText(info->companionPath2, pfm);
  return true;
}

bool FontSearch::MatchesKind(const Candidate& candidate, const HvFontInfo& info) const {
  if ((FontTypeBit(info.fontType) & fontTypes_) == 0) return false;
  if (query_.fontKind != FONT_KIND_PCL_WINDOWS || info.fontType != FONT_TYPE_PFM) return true;
  if (Exists(candidate, ReplaceExtension(candidate.path, "SFS"))) return false;
  const std::optional<PfmImage> image = PfmOpen(candidate.path.c_str());
  const std::string device = image ? PfmDeviceName(*image) : std::string();
  return device != "PostScript" && device != "Postscript";
}

// False when the search ends: the list is full, or there is no memory.
bool FontSearch::Try(const Candidate& candidate) {
  if (!MayMatch(candidate.path)) return true;
  HvFontInfo info = {};
  const bool allowMetricFiles = query_.classFilter != FONT_CLASS_DOWNLOADABLE;
  const uint32_t queried = QueryFontInformation(candidate.path.c_str(), &info, query_.companionMode,
                                                allowMetricFiles, candidate.listed);
  OwnedCartridge cartridge(info.cartridge);
  if (queried != HV_OK) return queried != HV_NO_MEMORY;
  const bool scalable = (FontTypeBit(info.fontType) & ScalableTypes) != 0;
  if (scalable && !FindMetrics(candidate, &info)) return true;
  if (!MatchesClass(info.fontClass) || !MatchesKind(candidate, info)) return true;
  if (names_.count(info.name) != 0) return true;
  if (total_ > 0 && *info.name != '\0') query_.progress(&info, Percent());

  CallerMemory<HvFontInfo> copy(static_cast<HvFontInfo*>(AllocateForCaller(sizeof(HvFontInfo))));
  if (copy == nullptr) return false;
  *copy = info;
  names_.insert(copy->name);
  HvFoundResource* const added =
      list_->Add(RESOURCE_FONT, candidate.path, CallerMemory<void>(copy.release()));
  if (added == nullptr) return false;
  static_cast<void>(cartridge.release());  // the list's now
  added->size = info.fileSize;
  return !list_->IsFull();
}

void FontSearch::Run() {
  if (query_.progress != nullptr) CountFiles();
  const bool indexed = std::find(std::begin(IndexedKinds), std::end(IndexedKinds),
                                 query_.fontKind) != std::end(IndexedKinds);
  if (indexed) {
    for (const FontIndexEntry& entry : ReadFontIndex(FolderOf(query_.directory))) {
      if (!Try({entry.fontPath, nullptr, &entry})) return;
    }
  }
  WalkFiles(query_.directory, query_.recurse, [this](const FoundFile& file) {
    ++seen_;
    if (total_ > 0) query_.progress(nullptr, Percent());
    return Try({file.path, &file, nullptr});
  });
}

}  // namespace

void FindFonts(const FontQuery& query, ResourceList* list) {
  FontSearch(query, list).Run();
}

}  // namespace hv
