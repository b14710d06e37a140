// The checks of the files a polishing tool is given, and the messages they give.
#include "polish/polish_files.h"

#include "core/brindle.h"
#include "core/files.h"
#include "core/input_file.h"

namespace zv {

namespace {

std::string breaks(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += "\r\n";
  return s;
}

int32_t countAfterRegistering(Job& job, const std::string& inFile, const std::string& outFile) {
  job.outputs.add(outFile);
  return LineCount(inFile);
}

}  // namespace

std::optional<Message> CheckPolishInput(const std::string& inFile, const FileWording& wording) {
  if (!Exist(inFile)) return Message{std::string(kFileNotFoundTitle), std::string(kFileNotFoundText)};
  if (FileSize(inFile) == 0)
    return Message{std::string(kZeroLengthTitle), inFile + breaks(wording.zeroLengthBreaks) + std::string(kZeroLengthText)};
  return std::nullopt;
}

std::optional<Message> CheckPolishFiles(const PolishFiles& files, const FileWording& wording) {
  if (auto refusal = CheckPolishInput(files.inFile, wording)) return refusal;
  return CheckPolishOutput(files.inFile, files.outFile, wording);
}

std::optional<Message> CheckPolishOutput(const std::string& inFile, const std::string& outFile,
                                         const FileWording& wording) {
  // Two names of one file are the same file, whatever their spelling.
  if (outFile == inFile || SameFile(inFile, outFile))
    return Message{std::string(kOutputIsInputTitle), std::string(kOutputIsInputText)};
  if (Exist(outFile))
    return Message{std::string(kOutputExistsTitle), outFile + breaks(wording.existsBreaks) + std::string(kOutputExistsText)};
  return std::nullopt;
}

std::string DerivedOutputName(const std::string& inFile, std::string_view ext) {
  if (inFile.find('.') == std::string::npos) return inFile + std::string(ext);
  return BaseName(inFile) + std::string(ext);
}

Message InputIsOutputMessage() { return {std::string(kOpenFileErrorTitle), std::string(kInputIsOutputText)}; }

Message NotRecordFileMessage() { return {std::string(kFormatErrorTitle), std::string(kNotFilteredText)}; }

LineToolFiles::LineToolFiles(Job& job, const std::string& inFile, const std::string& outFile)
    : lineCount(countAfterRegistering(job, inFile, outFile)), in(inFile), out(outFile) {}

}  // namespace zv
