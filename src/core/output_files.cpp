// Deleting a job's outputs on every way out but success.
#include "core/output_files.h"

#include <cstdio>

#include "core/files.h"

namespace zv {

OutputFiles::~OutputFiles() {
  if (!committed_) discardAll();
}

void OutputFiles::add(const std::string& path) { outputs_.push_back(path); }

void OutputFiles::alsoOnFailure(const std::string& path) { onFailure_.push_back(path); }

void OutputFiles::discardOutputs() noexcept {
  int32_t glExist = 0;
  for (const auto& p : outputs_) KillIfExists(p, glExist);
  committed_ = true;
}

void OutputFiles::discardAll() noexcept {
  int32_t glExist = 0;
  for (const auto& p : outputs_) KillIfExists(p, glExist);
  for (const auto& p : onFailure_) KillIfExists(p, glExist);
  committed_ = true;
}

void KillIfExists(const std::string& path, int32_t& glExist) noexcept {
  if (path.empty()) return;
  glExist = Exist(path);
  if (glExist) std::remove(path.c_str());
}

}  // namespace zv
