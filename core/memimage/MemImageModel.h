#pragma once
#include <array>
#include <cstdint>

#include "memimage/MemImageContext.h"

namespace tavlo {

class Database;

// The memory image as MemImageForm holds it: 50 preset slots, the scene
// slots that follow from them, the global settings and the memory they use.
// Reads that fail tell "There has been a Database Error" and leave the
// image as far as it got; nothing here writes to the pool.

// Brings the image to the stored "--Initialized--" image, with the default
// global settings selected, today as CreatedDateText and no name. Asks
// nothing.
void InitMemImage(const MemImageContext& session);

// Shows stored image `id` (a MemoryImageRec row): name, notes, dates,
// globals and the 50 slots, then the slots' follow-ups. A slot that names no
// existing preset stays "--Initialized--". False when there is no such row.
bool ShowStoredImage(const MemImageContext& session, std::int64_t id);

// Puts preset `id` into slot `slot` and runs the follow-ups; the image has
// changed. False for a slot outside 0..49 or a preset that isn't stored.
bool SetImageSlot(const MemImageContext& session, int slot, std::int64_t id);

// What every change of the slots is followed by, in this order:
// RescanDependencies, FillSceneList, CalculateMemoryImageSize with the
// result in FreeMemLabel. Returns the free memory.
long ImageSlotsChanged(const MemImageContext& session);

// Rebuilds SceneList from PresetList: the scenes of each slot's preset by
// name, slot 0 first, without gaps. At the 100th line it says "Not All
// Scenes Included" and stops, also when exactly 100 fit.
void FillSceneList(const MemImageContext& session);

// The presets that preset `id` needs scenes from. [0] the setup scene's
// owner, [1 + i] the owner of the scene that button i sends, -1 where there
// is none; [17] how many were entered. A setup scene of none (-1) differs
// from the preset and counts, though no slot will hold it.
using PresetDependencies = std::array<long, 19>;
PresetDependencies GetDependencies(Database& db, std::int64_t id);

// Puts preset `id` into the first "--Initialized--" slot and then, the same
// way, every preset it depends on that no slot holds. A full image is told
// once and stops the adding; what was put in stays. False when `id` itself
// found no slot.
bool AddPresetsRecursively(const MemImageContext& session, std::int64_t id);

// Completes the image with every preset that a slot's preset depends on.
void RescanDependencies(const MemImageContext& session);

// Refills PresetSizeList and returns FreeMemoryConfig less what the slots'
// presets use; a preset in two slots is charged twice and the result may
// be negative. A call while one runs returns 0.
long CalculateMemoryImageSize(const MemImageContext& session);

// Lets a store into the pool update the image: the store's follow-ups run
// RescanDependencies, FillSceneList and CalculateMemoryImageSize of this
// image. The session's parts must outlive the image's hooks.
void ConnectStoreFollowUps(const MemImageContext& session);

}  // namespace tavlo
