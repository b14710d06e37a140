// SelectRecordFile's checks of a chosen name, and the one call of the index builder.
#include "analysis/select_record_file.h"

#include "core/brindle.h"
#include "core/files.h"

namespace zv {

RecordFileChoice ChoiceOf(const JobState& job) {
  return {job.gsInFile, job.gsProFile, job.gsIndexFile, job.gsBaseName};
}

void UseChoice(JobState& job, const RecordFileChoice& choice) {
  job.gsInFile = choice.inFile;
  job.gsProFile = choice.proFile;
  job.gsIndexFile = choice.indexFile;
  job.gsBaseName = choice.baseName;
}

std::string StemOf(std::string_view path) {
  const std::size_t stop = path.find_last_of("\\/:");
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || (stop != std::string_view::npos && dot < stop)) return std::string(path);
  return std::string(path.substr(0, dot));
}

namespace {

void forgetNames(JobState& job) {
  job.gsInFile.clear();
  job.gsBaseName.clear();
  job.gsProFile.clear();
  job.gsIndexFile.clear();
}

bool holdsNdx(std::string_view name) { return name.find(".NDX") != std::string_view::npos; }

}  // namespace

bool IndexWasChosen(const JobState& job) { return holdsNdx(job.gsInFile); }

bool SelectRecordFile(JobState& job, const std::string& name, std::string_view requirement, Message& refusal) {
  forgetNames(job);
  if (name.find(".PRO") == std::string::npos && !holdsNdx(name)) {
    refusal = {"Not a .PRO or .NDX File", "The file you specified is\r\n" + name + "\r\n\r\n" +
                                              std::string(requirement) +
                                              "\r\na .PRO (processed by filter) file\r\n"
                                              "or a .NDX (index of a .PRO) file."};
    return false;
  }
  // A name that is not there measures 0 as well; nothing is created to find out.
  if (FileSize(name) == 0) {
    refusal = {"Zero-Length File", name + "\r\nis a zero-length file."};
    return false;
  }
  job.gsInFile = name;
  if (holdsNdx(name)) {
    job.gsBaseName = StemOf(name);
    job.gsIndexFile = name;
    job.gsProFile = job.gsBaseName + ".PRO";
  } else {
    job.gsProFile = name;
    job.gsBaseName = job.outputPath(BaseName(name));
    job.gsIndexFile = job.gsBaseName + ".NDX";
  }
  std::string problem;
  if (holdsNdx(name) && !Exist(job.gsIndexFile)) {
    problem = ".NDX file not found.";
  } else if (!Exist(job.gsProFile)) {
    problem = ".PRO file not found.";
  } else if (SameFile(job.gsProFile, job.gsIndexFile)) {
    // "x.NDX.PRO" names itself as its own index.
    problem = "The record file and its index would be the same file.";
  }
  if (!problem.empty()) {
    forgetNames(job);
    refusal = {"File Open Error", problem};
    return false;
  }
  return true;
}

JobResult IndexRecordFile(JobState& job, JobProgress& progress) { return BuildIndex(job, progress); }

}  // namespace zv
