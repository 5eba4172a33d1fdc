#include "pclxl_fault.h"

#include <fstream>
#include <string_view>

#include "pclxl/job_reader.h"

namespace hvtool {
namespace {

using hv::PclXlJobReader;
using hv::PclXlResult;

constexpr std::string_view Uel = "\x1B%-12345X";

const char* ReasonText(PclXlResult result) {
  switch (result) {
    case hv::PclXlEnded:
      return "the job ends early";
    case hv::PclXlMisplaced:
      return "the operator may not stand there";
    case hv::PclXlBadTag:
      return "the byte begins nothing that is accepted";
    case hv::PclXlBadBinding:
      return "the header does not say binary, low byte first";
    case hv::PclXlBadName:
    case hv::PclXlBadHeader:
      return "the header is not one of PCL XL";
    case hv::PclXlBadProtocol:
      return "the protocol is not class 1 revision 1";
    case hv::PclXlSecondPage:
      return "the job has a second page";
    case hv::PclXlStreamOnPage:
      return "a stream is defined or run on the page";
    case hv::PclXlWorkFile:
      return "the job has no page";
    case hv::PclXlTooLong:
      return "the operator has more or longer values than can be carried";
    default:
      return "";
  }
}

// Where the job begins behind UEL and PJL lines.
std::streamoff JobOffset(std::istream* file) {
  for (;;) {
    const std::streamoff at = file->tellg();
    std::string begin(Uel.size(), '\0');
    file->read(begin.data(), static_cast<std::streamsize>(begin.size()));
    file->clear();
    file->seekg(at);
    if (begin == Uel) {
      file->seekg(static_cast<std::streamoff>(Uel.size()), std::ios::cur);
    } else if (begin.starts_with("@PJL")) {
      std::string line;
      std::getline(*file, line);
    } else {
      return at;
    }
  }
}

bool IsInHeader(PclXlResult result) {
  return result >= hv::PclXlBadBinding && result <= hv::PclXlBadHeader;
}

}  // namespace

std::string PclXlFault(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return {};
  const auto base = static_cast<uint64_t>(JobOffset(&file));
  PclXlJobReader reader(
      [&](uint8_t* buffer, std::size_t size) {
        file.read(reinterpret_cast<char*>(buffer), static_cast<std::streamsize>(size));
        return static_cast<std::size_t>(file.gcount());
      },
      nullptr);
  const PclXlResult result = reader.Read();
  if (result == hv::PclXlOk) return {};
  const char* const name = hv::PclXlOperatorName(reader.LastOperator());
  std::string place = "byte " + std::to_string(base + reader.LastOffset());
  if (!IsInHeader(result) && name != nullptr) {
    // At the end of the job the operator is the one before.
    place =
        result == hv::PclXlEnded ? place + ", after " + name : std::string(name) + " at " + place;
  }
  return place + ": " + ReasonText(result);
}

}  // namespace hvtool
