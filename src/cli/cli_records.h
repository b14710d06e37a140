// The command line's record file commands: index, keep, order.
#pragma once

#include <string>

namespace zv::cli {

// zorvanta-cli index FILE.PRO: the .NDX beside it, as the sifter's BuildIndex makes it.
int RunIndex(const std::string& file);
// zorvanta-cli keep FILE.PRO|FILE.NDX --records LIST --to KEEPFILE
int RunKeep(const std::string& file, const std::string& records, const std::string& keepFile);
// zorvanta-cli order FILE.PRO|FILE.NDX --order LIST: BASE.ORD beside the file.
int RunOrder(const std::string& file, const std::string& order);

// Help text of the three commands, for the program's footer.
std::string RecordCommandsHelp();

}  // namespace zv::cli
