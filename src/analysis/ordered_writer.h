// Records of a .PRO written to a new file in a new order, from one read of the .PRO in
// file order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/record_blocks.h"
#include "core/job.h"

namespace zv {

// What the writer needs to know of the order and of each record. Positions p and
// record numbers k run from 1 to count(); recordAt is a permutation.
class OrderSource {
 public:
  virtual ~OrderSource() = default;
  virtual int32_t count() const = 0;
  // The record written at position p.
  virtual int32_t recordAt(int32_t p) const = 0;
  // Where record k's lines are read, and how many.
  virtual int64_t readAt(int32_t k) const = 0;
  virtual int32_t lines(int32_t k) const = 0;
  // The bytes that position p's record becomes.
  virtual int64_t bytes(int32_t p) const = 0;
  // Appends to `out` what position p's record becomes, from its lines: bytes(p) bytes.
  virtual void render(int32_t p, const RecordBlock& block, std::string& out) const = 0;
  // Whether position p's record becomes its bytes as they stand (bytes(p) of them from
  // readAt), with no need to find its lines again.
  virtual bool asItStands(int32_t /*p*/) const { return false; }
};

// Writes the records of `order`, in its order, to `outFile`, then `tail`.
//
// The output order is cut into runs in which the records come in file order. The
// .PRO is read once in file order, and each record goes into the buffer of its run,
// which is written at that run's place in the output whenever it fills: every
// record's size being known beforehand, every run knows where it begins. So the .PRO
// is read sequentially and the output written in large pieces, whatever the order;
// the memory is 16 bytes a record (24 when the offsets do not rise with the record
// numbers) and the runs' buffers, at most kBufferBytes.
//
// Returns false, having written nothing, when the order has more than kMaxRuns runs:
// the caller then writes record by record. Every record must fit in a block of
// RecordBlockReader's limit. `progress` sees each record written (recordDone with the
// count so far, lineDone with the lines so far against `totalLines`).
class OrderedWriter {
 public:
  static constexpr std::size_t kBufferBytes = std::size_t{8} << 20;
  static constexpr int32_t kMaxRuns = 2048;

  static bool write(const std::string& proFile, const std::string& outFile, const OrderSource& order,
                    std::string_view tail, JobProgress& progress, int32_t totalLines);
};

}  // namespace zv
