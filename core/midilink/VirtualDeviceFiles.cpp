#include "midilink/VirtualDeviceFiles.h"

#include <string>

#include "midilink/VirtualPC1600.h"
#include "ui/Prompter.h"

namespace tavlo {

void LoadVirtualMemory(VirtualPC1600& device, Prompter& prompter) {
    const auto path =
        prompter.openFile({"Load the Memory of the Virtual PC1600", "Sysex Files (*.syx)|*.syx", ".syx", ""});
    std::string error;
    if (path && !device.loadFile(*path, error)) prompter.message("Cannot Load Sysex File", error);
}

void SaveVirtualMemory(const VirtualPC1600& device, Prompter& prompter) {
    const auto path = prompter.saveFile(
        {"Save the Memory of the Virtual PC1600", "Sysex Files (*.syx)|*.syx", ".syx", "PC1600 Memory.syx"});
    std::string error;
    if (path && !device.saveFile(*path, error)) prompter.message("Cannot Save Sysex File", error);
}

}  // namespace tavlo
