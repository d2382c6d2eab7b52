#include "template/status/RecentAnswers.h"

#include <utility>

namespace commandfilter {

void RecentAnswers::remember(const ServiceQuestion& question, const Kept& kept) {
  if (!isCurrent(kept.generation)) {
    for (Entry& entry : entries_) entry.answer = Value();
    store_ = kept.store;
    losses_ = kept.store->losses();
    generation_ = kept.generation;
  }
  if (entries_.empty()) entries_.resize(kFewest);
  std::size_t place = find(question);
  if (entries_[place].isFree()) {
    makeRoom();
    place = find(question);
    ++count_;
  }
  Entry& entry = entries_[place];
  entry.question = question;
  for (std::size_t i = 0; i < entry.parts.size(); ++i) {
    entry.parts[i] = Value::sharing(question.part(i));
  }
  entry.key = kept.key;
  entry.answer = kept.generation != 0 ? kept.answer : Value();
}

void RecentAnswers::makeRoom() {
  if ((count_ + 1) * 2 <= entries_.size()) return;
  std::vector<Entry> before = std::exchange(entries_, {});
  if (before.size() >= kMost) {
    // Whoever asks that much begins again.
    entries_.resize(kFewest);
    count_ = 0;
    return;
  }
  entries_.resize(before.size() * 2);
  for (Entry& entry : before) {
    if (!entry.isFree()) entries_[find(entry.question)] = std::move(entry);
  }
}

}  // namespace commandfilter
