// The checks of a record file chosen for the sifter or named on the command line.
#include "records/record_file_choice.h"

#include "core/brindle.h"
#include "core/files.h"

namespace zv {

void ForgetRecordFile(JobState& job) {
  job.gsInFile.clear();
  job.gsBaseName.clear();
  job.gsProFile.clear();
  job.gsIndexFile.clear();
}

bool ChooseRecordFile(JobState& job, const std::string& name, Message& refusal) {
  ForgetRecordFile(job);
  if (name.find(".PRO") == std::string::npos && name.find(".NDX") == std::string::npos) {
    refusal = {"Not a .PRO or .NDX File", "The file you specified is\r\n" + name +
                                              "\r\n\r\nThe sifter requires that you specify\r\n"
                                              "a .PRO (processed by filter) file\r\n"
                                              "or a .NDX (index of a .PRO) file."};
    return false;
  }
  // A name that is not there has no length either; nothing is created to find out.
  if (FileSize(name) == 0) {
    refusal = {"Zero-Length File", name + "\r\nis a zero-length file."};
    return false;
  }
  job.gsInFile = name;
  job.gsBaseName = BaseName(name);
  if (IndexChosen(job)) {
    job.gsIndexFile = name;
    job.gsProFile = job.outputPath(job.gsBaseName + ".PRO");
  } else {
    job.gsProFile = name;
    job.gsIndexFile = job.outputPath(job.gsBaseName + ".NDX");
  }
  std::string problem;
  if (IndexChosen(job) && !Exist(job.gsIndexFile)) {
    problem = ".NDX file not found.";
  } else if (!Exist(job.gsProFile)) {
    problem = ".PRO file not found.";
  } else if (SameFile(job.gsProFile, job.gsIndexFile)) {
    // "x.NDX.PRO" names its own index: marks would be written into the records.
    problem = "The record file and its index would be the same file.";
  }
  if (!problem.empty()) {
    refusal = {"File Open Error", problem};
    ForgetRecordFile(job);
    return false;
  }
  return true;
}

}  // namespace zv
