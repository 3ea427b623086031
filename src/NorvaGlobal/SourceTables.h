#pragma once
// The constant source tables: display names, the physical inputs and the order sources are listed
// in.

#include <NorvaGlobal/Vocabulary.h>

#include <array>

namespace norva {

extern const TSourceLabels SourceNames;
extern const TSourceSet PhysicalSources;
// Lists of sources shown to the user follow this order, not the ordinal order.
extern const std::array<TSource, 17> SortedSources;

}  // namespace norva
