// The questions that were asked last.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "template/status/ServiceQuestion.h"

namespace commandfilter {

/// Remembers some questions, the keys of their answers and the answers, so that asking again puts
/// no text together and searches nothing.
class RecentAnswers {
 public:
  /// An answer, and where it is kept.
  struct Kept {
    const Value& key;
    /// The null object stands for nil.
    const Value& answer;
    const RefPtr<MutableDictionary>& store;
    /// When the store was the current one; 0 for an answer that must be looked for every time.
    std::uint64_t generation;
  };

  /// The answer to a question, borrowed until the next one is remembered or all are forgotten; the
  /// null object stands for nil. nil when it is not known, or may have changed.
  [[nodiscard]] const Value& answerTo(const ServiceQuestion& question,
                                      std::uint64_t generation) const noexcept {
    return isCurrent(generation) ? entries_[find(question)].answer : kNone;
  }
  /// What the answer to a question is kept under, borrowed until the next one is remembered; nil
  /// when it is not known.
  [[nodiscard]] const Value& keyFor(const ServiceQuestion& question) const noexcept {
    return entries_.empty() ? kNone : entries_[find(question)].key;
  }
  /// The question must be one that can be remembered.
  void remember(const ServiceQuestion& question, const Kept& kept);
  /// Forgets the answers, not the keys.
  void forgetAnswers() noexcept;

 private:
  static constexpr std::size_t kFewest = 64;
  static constexpr std::size_t kMost = 1024;
  static constexpr Value kNone{};

  struct Entry {
    [[nodiscard]] bool isFree() const noexcept { return key.isNil(); }

    ServiceQuestion question;
    Value key;
    Value answer;
    /// Keeps what the question is about, so that its address stands for nothing else.
    std::array<RefPtr<Object>, ServiceQuestion::kMostParts> parts;
  };

  [[nodiscard]] bool isCurrent(std::uint64_t generation) const noexcept {
    return generation == generation_ && store_ && store_->losses() == losses_;
  }
  /// The place of the question, or the free one that it would take.
  [[nodiscard]] std::size_t find(const ServiceQuestion& question) const noexcept {
    std::size_t place = question.hash() & mask_;
    while (!entries_[place].isFree() && !(entries_[place].question == question)) {
      place = (place + 1) & mask_;
    }
    return place;
  }
  /// Keeps a quarter of the places free.
  void makeRoom();
  /// Gives the table so many places, all free; what it had is in the result.
  std::vector<Entry> replaceEntries(std::size_t count);

  // Empty until something is remembered; then a table that is searched from a question's hash on.
  std::vector<Entry> entries_;
  /// One less than there are places, whose number is a power of two.
  std::size_t mask_ = 0;
  std::size_t count_ = 0;
  /// Where the answers stand, and when they were true.
  RefPtr<MutableDictionary> store_;
  std::uint64_t losses_ = 0;
  std::uint64_t generation_ = 0;
};

}  // namespace commandfilter
