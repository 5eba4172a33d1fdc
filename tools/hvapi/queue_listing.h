// The print queues that a destination may name.
#pragma once

#include <string>
#include <vector>

#include "program.h"

namespace hvtool {

struct Queue {
  std::string name;
  std::string kind;
  std::string documents;  // finished ones that lie there, empty where that is not known
  std::string place;
};

// Those of the spool folder, then those of the system's spooler, each name once: in the order in
// which a destination is tried.
std::vector<Queue> ListQueues();

Json QueuesAsJson(const std::vector<Queue>& queues);

}  // namespace hvtool
