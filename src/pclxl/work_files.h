// The work files of a PCL XL conversion. They have fixed names in the current directory, so that
// one conversion at a time owns them: whoever holds a PclXlWorkFiles, from before the first of them
// is written until they are gone.
#pragma once

#include <mutex>

namespace hv {

class PclXlWorkFiles {
 public:
  static constexpr const char* Input = "in.str";    // the job to convert
  static constexpr const char* Page = "temp.str";   // the operators of its page
  static constexpr const char* Output = "out.str";  // the converted job

  // Waits for a conversion of another thread.
  PclXlWorkFiles();

  // Deletes those that are there. Whether they are deleted otherwise is for the owner to say:
  // nothing but this call removes them.
  void Remove() const;

 private:
  std::lock_guard<std::mutex> lock_;
};

}  // namespace hv
