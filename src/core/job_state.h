// The state of the one running job, under the names the tools share.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "core/index_rec.h"

namespace zv {

// What the program keeps in public variables for the one job that runs. The GUI holds
// one of these for the running job; tests and the command line make their own.
struct JobState {
  std::string gsInFile;      // the input capture, as chosen
  std::string gsBaseName;    // stem of every output name
  std::string gsProFile;     // gsBaseName + ".PRO"
  std::string gsIndexFile;   // gsBaseName + ".NDX"
  std::string gsFscFile;     // gsBaseName + ".FSC", for the filters that make one
  std::string gsLine;        // the line being processed
  std::string gsPrevLine;    // the line before it, as it stood after cleaning
  std::string gsErrNumber;   // number of the last trapped error, with its leading blank
  std::string gsErrText;     // its description
  int32_t glLineCount = 0;   // lines of the input: the progress bar's denominator
  int32_t glRecNum = 0;      // records recognized so far
  // 1 when the user asked to interrupt; set from the interface (or a signal handler)
  // between two lines, looked at once per line.
  std::atomic<int16_t> giInterrupt{0};
  int16_t giCancelOpen = 0;  // 1 when no input file was chosen
  IndexRec gIndexRec;        // the one record buffer of all index traffic

  // Where outputs are written: empty for the current directory (and a stem that kept
  // its folders, from an input without an extension, is written there, beside it).
  std::string outDir;

  // The path a job writes for gsBaseName + extension: the name as it is without an
  // output folder; with one, the folder and the name's last component, always.
  std::string outputPath(const std::string& name) const;

  // Empties the strings of the job (the frame's CleanUp, for the shared part).
  void CleanUp();
};


}  // namespace zv
