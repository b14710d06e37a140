// Index records for the content tools: in order in large blocks, or one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/analysis_common.h"
#include "core/index_rec.h"

namespace zv {

// Reads a .NDX without changing it. Records asked for in ascending order come from one
// read of many records; a record asked for out of order is one read of its own.
class IndexReader {
 public:
  explicit IndexReader(const std::string& path);
  ~IndexReader();
  IndexReader(const IndexReader&) = delete;
  IndexReader& operator=(const IndexReader&) = delete;

  // glRecCount: the file's length / 277, truncated.
  int32_t count() const { return count_; }
  // Record k, from 1. A record beyond the end is error 62.
  const IndexRec& get(int32_t k);

 private:
  void load(int32_t first, int32_t n);

  int fd_ = -1;
  std::string path_;
  int32_t count_ = 0;
  std::vector<unsigned char> block_;
  int32_t blockFirst_ = 0;  // record number of the block's first record; 0: none
  int32_t blockCount_ = 0;
  int32_t current_ = 0;     // the record decoded into rec_
  IndexRec rec_;
};

// Record r as a writer reads it: from byte 0 for record 1, else its startByte; its
// lines held in 16 bits.
RecordExtent WriteExtent(IndexReader& ndx, int32_t r);

}  // namespace zv
