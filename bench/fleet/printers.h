// A fleet of printers on loopback ports, all served by one process that compares what each of them
// gets, byte by byte, with what it has to get.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace fleet {

enum class Manner {
  Quick,     // reads as fast as it can
  Slow,      // reads a little now and then
  Refusing,  // has no port open
  Silent     // takes connections and never reads
};

// The files that are printed, and which of them a printer gets. The frame of a job names its printer,
// so that no two printers get the same bytes.
constexpr std::size_t Files = 16;
std::string FileBytes(std::size_t file);
std::string JobName(std::size_t printer);
std::string FrameBefore(std::size_t printer);
std::string FrameBehind();

class Printers {
 public:
  // Starts printers that behave so.
  explicit Printers(const std::vector<Manner>& manners);
  Printers(const Printers&) = delete;
  Printers& operator=(const Printers&) = delete;
  // Ends those that Finish has not ended.
  ~Printers();

  uint16_t Port(std::size_t printer) const { return ports_[printer]; }

  // What a printer got: whole documents, and any that differed or were cut short.
  struct Received {
    uint32_t whole;
    uint32_t wrong;
  };
  // Ends all printers, those that still read when they have all, and tells what they got.
  std::vector<Received> Finish();

 private:
  std::vector<uint16_t> ports_;
  int control_ = -1;  // its end is the end of the printers
  pid_t process_ = -1;
};

// Ends the program when something that a measurement needs is not there.
void Need(bool there, const char* what);

}  // namespace fleet
