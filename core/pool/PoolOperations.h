#pragma once
#include <cstdint>
#include "pool/PoolContext.h"

namespace tavlo {

// The buttons of PoolForm. Each acts on the line PoolOperationLine picks
// (PoolList.h) and asks its questions through the session's prompter.

// DeleteButton: the preset, its companion rows and every reference to it;
// memory images that used it point at "--Initialized--" afterwards.
void DeleteButton(const PoolContext& session);
// DuplicateButton: a copy under a new name, made through the editor.
void DuplicateButton(const PoolContext& session);
// RenameButton: a new name; references use the ID and stay.
void RenameButton(const PoolContext& session);
// EditButton: loads the preset into the editor, unbound from the image.
void EditButton(const PoolContext& session);

// The cascade of DeleteButton without its questions, in one transaction.
void DeletePresetRows(const PoolContext& session, std::int64_t id);

}  // namespace tavlo
