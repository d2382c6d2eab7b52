// Keys of a sort as numbers.
#pragma once

#include <cstddef>
#include <span>

#include "evaluation/KeyPlace.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Notes the images of keys that are all numbers, or all dates.
void noteImages(KeyPlaces places, std::span<const Value> keys) noexcept;

/// Notes the images of keys that are texts, from the byte `begin` on.
void noteTextImages(KeyPlaces places, std::span<const Value> keys, std::size_t begin) noexcept;

/// How many bytes all the texts begin with, which are known to begin with `known` of them.
[[nodiscard]] std::size_t commonBytes(KeyPlaces places, std::span<const Value> keys,
                                      std::size_t known) noexcept;

}  // namespace commandfilter
