#include "wordreader/sub_doc_iterator.h"

void _SubDocIterator::Init(const KDRFib::SubDocLengths& lengths) {
  lengths_ = &lengths;
  type_ = 0;
  total_ = 0;
  remain_ = lengths[0];
}

_SubDocIterator& _SubDocIterator::operator++() {
  total_ += GetSubDocLen();
  do ++type_;
  while (!Finished() && (*lengths_)[type_] == 0);
  remain_ = GetSubDocLen();
  return *this;
}

void _SubDocIterator::ReduceHandCount(uint32_t n) {
  if (n == remain_) {
    ++*this;
  } else {
    remain_ -= n;
  }
}
