// The sifter's two writers: kept records to their keep files, all records in order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/index_progress.h"

namespace zv {

// Write Kept Records. For each record of the index, in ascending order, whose
// keepFlag is not 0: its lines (endLine - startLine + 1 of them, read from 0 for
// record 1, else from startByte) are appended with CR LF to its keepFile, trimmed of
// blanks, which is created if missing; record 1 gets one more CR LF. Then every mark
// in the index is cleared. Returns the written count, a 16-bit number: a run that
// keeps more than 32767 records fails with error 6.
//
// On any failure each keep file is put back as it was before the run (cut back to
// its old length, or deleted if the run created it) and the error is thrown on.
int16_t WriteKeptRecords(const std::string& proFile, const std::string& indexFile, int32_t glRecCount,
                         WritingProgress& frmWriting);

// Write Order: every record in the order of glOrder (positions 1 to glRecCount), in
// the same line form, record 1 followed by one more CR LF, and one CR LF closing the
// file. `ordFile` (gsBaseName + ".ORD") is replaced. A record of 32768 lines or more
// fails with error 6, as its count is 16-bit. On any failure the .ORD is deleted.
void WriteOrder(const std::string& proFile, const std::string& indexFile, const std::string& ordFile,
                const std::vector<int32_t>& glOrder, int32_t glRecCount, WritingProgress& frmWriting);

}  // namespace zv
