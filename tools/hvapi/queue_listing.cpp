#include "queue_listing.h"

#include <algorithm>
#include <filesystem>

#include "system.h"

namespace hvtool {
namespace {

namespace fs = std::filesystem;

std::string CountDocuments(const fs::path& folder) {
  std::error_code failed;
  std::size_t count = 0;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    const fs::path name = entry->path().filename();
    if (name.extension() == ".prn" && name.string().front() != '.') ++count;
  }
  return failed ? "" : std::to_string(count);
}

std::vector<Queue> SpoolQueues() {
  std::vector<Queue> queues;
  std::error_code failed;
  for (fs::directory_iterator entry(SpoolFolder(), failed), end; !failed && entry != end;
       entry.increment(failed)) {
    std::error_code unreadable;
    if (!entry->is_directory(unreadable)) continue;
    queues.push_back({entry->path().filename().string(), "spool directory",
                      CountDocuments(entry->path()), entry->path().string()});
  }
  std::sort(queues.begin(), queues.end(),
            [](const Queue& a, const Queue& b) { return a.name < b.name; });
  return queues;
}

}  // namespace

std::vector<Queue> ListQueues() {
  std::vector<Queue> queues = SpoolQueues();
  const std::size_t own = queues.size();
  for (const std::string& name : SystemQueues()) {
    const auto end = queues.begin() + static_cast<std::ptrdiff_t>(own);
    const bool hidden =
        std::any_of(queues.begin(), end, [&](const Queue& queue) { return queue.name == name; });
    if (!hidden) queues.push_back({name, SystemSpoolerName, "", ""});
  }
  return queues;
}

Json QueuesAsJson(const std::vector<Queue>& queues) {
  Json list = Json::array();
  for (const Queue& queue : queues) {
    Json item = {{"name", queue.name}, {"kind", queue.kind}};
    if (!queue.documents.empty()) item["documents"] = std::stoull(queue.documents);
    if (!queue.place.empty()) item["folder"] = queue.place;
    list.push_back(item);
  }
  return list;
}

}  // namespace hvtool
