#pragma once

namespace tavlo {

class Prompter;
class VirtualPC1600;

// The memory of the virtual PC1600 to and from a .syx file, as the MIDI
// configuration window's Load and Save buttons offer it: the file is asked
// for, and a file that can't be read or written is named in a message.
void LoadVirtualMemory(VirtualPC1600& device, Prompter& prompter);
void SaveVirtualMemory(const VirtualPC1600& device, Prompter& prompter);

}  // namespace tavlo
