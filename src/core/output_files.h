// The files a job writes, deleted unless the job commits them.
#pragma once

#include <string>
#include <vector>

namespace zv {

// Holds the names of a job's outputs from the moment they are opened. Unless commit()
// is called, the destructor deletes them, so a thrown error cleans up by construction.
// Files of an earlier run that belong with the outputs (the sifter's .WRK) are named
// by alsoOnFailure and go on interrupt and error, but not on discardOutputs().
class OutputFiles {
 public:
  OutputFiles() = default;
  ~OutputFiles();
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;

  void add(const std::string& path);
  void alsoOnFailure(const std::string& path);

  // Keep everything from now on.
  void commit() noexcept { committed_ = true; }
  // Deletes the outputs only (the zero-record path).
  void discardOutputs() noexcept;
  // Deletes the outputs and the files named by alsoOnFailure (interrupt and error).
  void discardAll() noexcept;

 private:
  std::vector<std::string> outputs_;
  std::vector<std::string> onFailure_;
  bool committed_ = false;
};

// Deletes `path` if Exist finds it; the result of Exist goes to `glExist`.
void KillIfExists(const std::string& path, int32_t& glExist) noexcept;

}  // namespace zv
