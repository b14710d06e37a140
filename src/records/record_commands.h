// index, keep and order: the sifter's own steps as commands of their own, without its
// window (the command line runs them).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/dispatcher.h"

namespace zv {

// Their rows in the command table.
inline constexpr int32_t kIndexRecordFile = 9001;
inline constexpr int32_t kKeepRecords = 9002;
inline constexpr int32_t kOrderRecords = 9003;

// A record file and its index, as ChooseRecordFile named them.
struct RecordFileInput {
  std::string proFile;
  std::string indexFile;
};

// Records to append to one keep file.
struct KeepInput {
  RecordFileInput file;
  int32_t glRecCount = 0;        // the records of the index
  std::vector<int32_t> records;  // numbers from 1 to glRecCount, in any order
  std::string keepFile;          // taken as given, added to
};

// Every record written to `ordFile` in the order of `glOrder` (see OrderPuttingFirst).
struct OrderInput {
  RecordFileInput file;
  int32_t glRecCount = 0;
  std::vector<int32_t> glOrder;
  std::string ordFile;
};

// 9001: BuildIndex of the .PRO (RecordFileInput); `records` is the count.
JobResult IndexRecordFileCommand(CommandContext& context);
// 9002: MarkForKeeping, then Write Kept Records (KeepInput); `records` is the written
// count. On every way out but Done the marks are cleared again and the keep file is
// as it was.
JobResult KeepRecordsCommand(CommandContext& context);
// 9003: Write Order (OrderInput).
JobResult OrderRecordsCommand(CommandContext& context);

// Marks the listed records for `keepFile` and takes every other mark off, so that
// marks an abnormally ended session left cannot send records to files not named here.
// Only records whose entry changes are written.
void MarkForKeeping(const std::string& indexFile, int32_t glRecCount, std::span<const int32_t> records,
                    const std::string& keepFile);

// The order of `count` records that puts `first` at positions 1, 2, ... in turn and the
// others after them in their own order: what Order gives when each listed record is
// moved to the next position in turn. Slots 0 and count + 1 hold 0, as in
// IdentityOrder. A record listed twice gives an empty order, with its number in
// `twice`; every number must lie in 1 to count.
std::vector<int32_t> OrderPuttingFirst(std::span<const int32_t> first, int32_t count, int32_t& twice);

}  // namespace zv
