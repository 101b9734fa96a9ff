#pragma once

#include <QtGlobal>
#include <algorithm>
#include <functional>
#include <limits>
#include <vector>

namespace store {

// Walks pointers and targets side by side in the order of their common number: that spares a search
// among the ones for each of the others.
class Pairing final {
 public:
  explicit Pairing(const std::vector<qint64>& targets)
      : next_(targets.begin()), end_(targets.end()), targets_(targets.size()) {
    inOrder_ = std::adjacent_find(next_, end_, std::greater_equal<>()) == end_;
  }
  // True if the target is there.
  bool meets(qint64 target, qint64 pointer) {
    inOrder_ = inOrder_ && (target > target_ || (target == target_ && pointer > pointer_));
    ++pointers_;
    met_ += matched_ && target != target_ ? 1U : 0U;
    target_ = target;
    pointer_ = pointer;
    while (next_ != end_ && *next_ < target) ++next_;
    matched_ = next_ != end_ && *next_ == target;
    pairs_ += matched_ ? 1 : 0;
    return matched_;
  }
  qint64 pairs() const { return pairs_; }
  bool inOrder() const { return inOrder_; }
  bool isComplete() const { return pairs_ == pointers_ && met_ + (matched_ ? 1U : 0U) == targets_; }

 private:
  std::vector<qint64>::const_iterator next_;
  std::vector<qint64>::const_iterator end_;
  std::size_t targets_;
  std::size_t met_ = 0;  // targets, but the last one
  qint64 pointers_ = 0;
  qint64 pairs_ = 0;
  qint64 target_ = std::numeric_limits<qint64>::min();
  qint64 pointer_ = std::numeric_limits<qint64>::min();
  bool matched_ = false;
  bool inOrder_ = true;
};

}  // namespace store
