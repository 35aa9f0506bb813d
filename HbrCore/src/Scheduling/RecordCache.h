#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace hbr {

/// Values that were worked out of the store's records, kept from reload to reload. A record never changes,
/// and what did not change in the store is the same record in every answer. Not for several threads.
template <class Record, class Value>
class RecordCache {
  public:
    /// The value as it was left; a new one for a record that is not known.
    Value& of(const std::shared_ptr<const Record>& record) {
        Kept& kept = kept_[record.get()];
        if (!kept.record) kept.record = record;
        if (kept.round != round_) ++asked_;
        kept.round = round_;
        return kept.value;
    }

    /// Ends a round of questions: what was not asked for in it is dropped.
    void forgetUnused() {
        if (asked_ != kept_.size())
            std::erase_if(kept_, [&](const auto& each) { return each.second.round != round_; });
        ++round_;
        asked_ = 0;
    }
    void clear() {
        kept_.clear();
        asked_ = 0;
    }

  private:
    struct Kept {
        /// Keeps the record, so that its address stays its own.
        std::shared_ptr<const Record> record;
        Value value{};
        std::uint64_t round = 0;
    };
    std::unordered_map<const Record*, Kept> kept_;
    std::uint64_t round_ = 1;
    std::size_t asked_ = 0;
};

}  // namespace hbr
