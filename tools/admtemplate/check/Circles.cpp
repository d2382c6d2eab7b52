#include "check/Circles.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

namespace commandfilter::tools {

namespace {

constexpr std::size_t kNone = SIZE_MAX;

// The groups of definitions that reach each other, by Tarjan's algorithm, without recursion.
class Groups {
 public:
  Groups(const ReferenceGraph& graph, bool certainOnly)
      : graph_(graph), certainOnly_(certainOnly), groups_(graph.uses.size(), kNone) {
    order_.resize(graph.uses.size(), kNone);
    lowest_.resize(graph.uses.size(), kNone);
    for (std::size_t node = 0; node < graph.uses.size(); ++node) {
      if (order_[node] == kNone) search(node);
    }
  }

  [[nodiscard]] bool follows(const Use& use) const { return use.isCertain || !certainOnly_; }
  [[nodiscard]] bool areTogether(std::size_t left, std::size_t right) const {
    return groups_[left] == groups_[right];
  }

 private:
  struct Step {
    std::size_t node;
    std::size_t nextUse = 0;
  };

  void search(std::size_t start) {
    enter(start);
    while (!path_.empty()) {
      Step& step = path_.back();
      const std::size_t node = step.node;
      if (step.nextUse == graph_.uses[node].size()) {
        leave(node);
        continue;
      }
      const Use& use = graph_.uses[node][step.nextUse++];
      if (!follows(use)) continue;
      if (order_[use.target] == kNone) {
        enter(use.target);
      } else if (groups_[use.target] == kNone) {
        lowest_[node] = std::min(lowest_[node], order_[use.target]);
      }
    }
  }

  void enter(std::size_t node) {
    order_[node] = lowest_[node] = count_++;
    open_.push_back(node);
    path_.push_back({node});
  }

  void leave(std::size_t node) {
    path_.pop_back();
    if (!path_.empty()) {
      const std::size_t above = path_.back().node;
      lowest_[above] = std::min(lowest_[above], lowest_[node]);
    }
    if (lowest_[node] != order_[node]) return;
    std::size_t member = kNone;
    do {
      member = open_.back();
      open_.pop_back();
      groups_[member] = node;
    } while (member != node);
  }

  const ReferenceGraph& graph_;
  bool certainOnly_;
  std::vector<std::size_t> groups_;
  std::vector<std::size_t> order_;
  std::vector<std::size_t> lowest_;
  std::vector<std::size_t> open_;
  std::vector<Step> path_;
  std::size_t count_ = 0;
};

class Search {
 public:
  Search(const Definitions& definitions, const ReferenceGraph& graph)
      : definitions_(definitions),
        graph_(graph),
        covered_(graph.uses.size()),
        reachedIn_(graph.uses.size()),
        reachedBy_(graph.uses.size()) {}

  std::vector<Circle> run() {
    collect(Groups(graph_, true), true);
    collect(Groups(graph_, false), false);
    return std::move(circles_);
  }

 private:
  void collect(const Groups& groups, bool certain) {
    collect(groups, certain, DefinitionKind::Value);
    // A macro that calls itself under a condition can come to an end.
    if (certain) collect(groups, certain, DefinitionKind::Macro);
  }

  void collect(const Groups& groups, bool certain, DefinitionKind kind) {
    constexpr std::size_t kMostSteps = 20'000'000;
    for (std::size_t node = 0; node < graph_.uses.size(); ++node) {
      if (covered_[node] || definitions_.all()[node].kind != kind) continue;
      if (steps_ > kMostSteps) return;
      if (std::optional<Circle> circle = shortest(groups, node)) {
        circle->isCertain = certain;
        for (const Use& use : circle->uses) covered_[use.target] = true;
        circles_.push_back(*std::move(circle));
      }
    }
  }

  // Breadth first, inside of the group.
  std::optional<Circle> shortest(const Groups& groups, std::size_t start) {
    ++searches_;
    std::deque<std::size_t> waiting{start};
    while (!waiting.empty()) {
      const std::size_t node = waiting.front();
      waiting.pop_front();
      for (const Use& use : graph_.uses[node]) {
        ++steps_;
        if (!groups.follows(use) || !groups.areTogether(start, use.target)) continue;
        if (use.target == start) return circleBackFrom(node, start, use);
        if (reachedIn_[use.target] == searches_) continue;
        reachedIn_[use.target] = searches_;
        reachedBy_[use.target] = {node, &use};
        waiting.push_back(use.target);
      }
    }
    return std::nullopt;
  }

  Circle circleBackFrom(std::size_t node, std::size_t start, const Use& last) {
    Circle circle{{last}, false};
    while (node != start) {
      circle.uses.push_back(*reachedBy_[node].use);
      node = reachedBy_[node].from;
    }
    std::ranges::reverse(circle.uses);
    return circle;
  }

  struct Reached {
    std::size_t from = 0;
    const Use* use = nullptr;
  };

  const Definitions& definitions_;
  const ReferenceGraph& graph_;
  std::vector<Circle> circles_;
  std::vector<bool> covered_;
  // The search that reached a definition last, and how.
  std::vector<std::size_t> reachedIn_;
  std::vector<Reached> reachedBy_;
  std::size_t searches_ = 0;
  std::size_t steps_ = 0;
};

}  // namespace

std::vector<Circle> findCircles(const Definitions& definitions, const ReferenceGraph& graph) {
  return Search(definitions, graph).run();
}

}  // namespace commandfilter::tools
