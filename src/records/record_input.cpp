// Choosing the record file of a one-pass tool.
#include "records/record_input.h"

#include <filesystem>

#include "core/files.h"
#include "core/input_file.h"
#include "records/build_index.h"
#include "records/record_file_choice.h"

namespace zv {

bool ChooseRecordInput(JobState& job, const std::string& name, RecordInput& input, Message& refusal) {
  input = {};
  if (!Exist(name)) {
    refusal = {std::string(kFileNotFoundTitle), std::string(kFileNotFoundText) + "\r\n" + name};
    return false;
  }
  if (FileSize(name) == 0) {
    refusal = {"Zero-Length File", name + "\r\nis a zero-length file."};
    return false;
  }
  if (name.find(".NDX") == std::string::npos) {
    input.pro = name;
    return true;
  }
  // The .PRO of an index lies beside it.
  job.outDir = std::filesystem::path(name).parent_path().string();
  if (!ChooseRecordFile(job, name, refusal)) return false;
  input.pro = job.gsProFile;
  input.index = job.gsIndexFile;
  return true;
}

Message NotARecordFileMessage() { return {std::string(kFileFormatErrorTitle), std::string(kNotRecordFileText)}; }

}  // namespace zv
