#pragma once
#include <cstdint>

namespace tavlo {

class Session;

// The buttons of PoolForm. Each acts on the line PoolOperationLine picks
// (PoolList.h) and asks its questions through the session's prompter.

// DeleteButton: the preset, its companion rows and every reference to it;
// memory images that used it point at "--Initialized--" afterwards.
void DeleteButton(Session& session);
// DuplicateButton: a copy under a new name, made through the editor.
void DuplicateButton(Session& session);
// RenameButton: a new name; references use the ID and stay.
void RenameButton(Session& session);
// EditButton: loads the preset into the editor, unbound from the image.
void EditButton(Session& session);

// The cascade of DeleteButton without its questions, in one transaction.
void DeletePresetRows(Session& session, std::int64_t id);

}  // namespace tavlo
