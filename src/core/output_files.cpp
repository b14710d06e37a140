// Removing a job's outputs on every way out but success.
#include "core/output_files.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "core/files.h"

namespace zv {

OutputFiles::~OutputFiles() {
  if (!committed_) settle(WayOut::Failed);
}

void OutputFiles::add(const std::string& path, KeepOn keepOn) {
  for (Output& o : outputs_) {
    if (o.path == path) {
      o.keepOn = keepOn;
      return;
    }
  }
  outputs_.push_back({path, keepOn});
}

void OutputFiles::alsoOnFailure(const std::string& path) { onFailure_.push_back(path); }

void OutputFiles::appendTo(const std::string& path) {
  for (const Appended& a : appended_)
    if (a.path == path) return;
  appended_.push_back({path, Exist(path) ? FileSize(path) : -1});
}

void OutputFiles::forget(const std::string& path) {
  std::erase_if(outputs_, [&](const Output& o) { return o.path == path; });
}

void OutputFiles::settle(WayOut way) noexcept {
  if (committed_) return;
  committed_ = true;
  for (const Output& o : outputs_)
    if (!o.keepOn.has(way)) KillIfExists(o.path);
  if (way != WayOut::ZeroRecords)
    for (const std::string& p : onFailure_) KillIfExists(p);
  for (const Appended& a : appended_) {
    if (a.sizeBefore < 0) {
      KillIfExists(a.path);
    } else if (::truncate(a.path.c_str(), static_cast<off_t>(a.sizeBefore)) != 0) {
      // Nothing more can be done for it; the error that stopped the job is reported.
    }
  }
}

std::vector<std::string> OutputFiles::existing() const {
  std::vector<std::string> out;
  for (const Output& o : outputs_)
    if (Exist(o.path)) out.push_back(o.path);
  for (const Appended& a : appended_)
    if (Exist(a.path)) out.push_back(a.path);
  return out;
}

bool KillIfExists(const std::string& path) noexcept {
  if (path.empty() || !Exist(path)) return false;
  std::remove(path.c_str());
  return true;
}

}  // namespace zv
