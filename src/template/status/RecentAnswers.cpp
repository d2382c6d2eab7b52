#include "template/status/RecentAnswers.h"

#include <utility>

#include "runtime/ValueVector.h"

namespace commandfilter {

void RecentAnswers::remember(const ServiceQuestion& question, const Kept& kept) {
  if (!isCurrent(kept.generation)) forgetAnswers();
  if (entries_.empty()) replaceEntries(kFewest);
  std::size_t place = find(question);
  if (entries_[place].isFree()) {
    makeRoom();
    place = find(question);
    ++count_;
  }
  Entry& entry = entries_[place];
  entry.question = question;
  for (std::size_t i = 0; i < entry.parts.size(); ++i) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): shared, not changed
    entry.parts[i] = RefPtr<Object>(const_cast<Object*>(question.part(i)));
  }
  entry.key = kept.key;
  entry.answer = kept.generation != 0 ? kept.answer : Value();
  store_ = kept.store;
  losses_ = kept.store->losses();
  generation_ = kept.generation;
}

void RecentAnswers::forgetAnswers() noexcept {
  store_ = nullptr;
  // An answer that goes may ask for something in its turn.
  ValueVector before;
  for (Entry& entry : entries_) before.push_back(std::exchange(entry.answer, Value()));
}

void RecentAnswers::makeRoom() {
  if (count_ + 1 <= entries_.size() - entries_.size() / 4) return;
  // Whoever asks that much begins again.
  const bool isFull = entries_.size() >= kMost;
  std::vector<Entry> before = replaceEntries(isFull ? kFewest : entries_.size() * 2);
  if (isFull) {
    count_ = 0;
    return;
  }
  for (Entry& entry : before) {
    if (!entry.isFree()) entries_[find(entry.question)] = std::move(entry);
  }
}

std::vector<RecentAnswers::Entry> RecentAnswers::replaceEntries(std::size_t count) {
  std::vector<Entry> before(count);
  entries_.swap(before);
  mask_ = count - 1;
  return before;
}

}  // namespace commandfilter
