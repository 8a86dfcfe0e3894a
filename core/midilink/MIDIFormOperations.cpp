#include "midilink/MIDIFormOperations.h"

#include <algorithm>
#include <limits>

#include "base/MSBModule.h"
#include "sysex/DeviceMessages.h"
#include "midilink/ExchangeDump.h"
#include "base/MSBModule.h"
#include "db/Database.h"
#include "midilink/LinkContext.h"
#include "midilink/MidiLink.h"
#include "midilink/MidiConfig.h"
#include "ui/StatusView.h"
#include "ui/Pump.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"

namespace tavlo {
namespace {

constexpr const char* kCaption = "Midi Configuration";

template <typename Port>
bool ReopenPort(const LinkContext& session, Port& port, const ListState& list, const std::vector<std::string>& names,
                const char* which) {
    port.close();
    port.setDeviceNumber(list.listIndex());
    if (list.listIndex() < 0) return false;
    // Devices may have come or gone since the list was filled: the line's
    // name, not its number, says which device was meant.
    std::string error;
    if (port.productName() != list.text()) {
        const auto it = std::find(names.begin(), names.end(), list.text());
        port.setDeviceNumber(it == names.end() ? -1 : static_cast<int>(it - names.begin()));
        if (it == names.end()) error = "The device \"" + list.text() + "\" is not present on this system.";
    }
    if (error.empty() && port.open(error)) return true;
    session.prompter.message("Cannot Open MIDI Port",
                             std::string("The ") + which + " could not be opened.  " + error +
                                 "  Please choose another device in the MIDI Configuration.");
    return false;
}

void FillDeviceList(ListState& list, const std::vector<std::string>& names, const std::string& stored) {
    list.clear();
    for (const auto& name : names) list.addItem(name);
    list.setListIndex(list.findText(stored));
}

}  // namespace

void SetInputFilters(const LinkContext& session) {
    for (int kind = 0; kind <= 255; ++kind) session.midiLink.MIDIIn.accept(kind, true);
}

bool MIDIInDevicesList_Click(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    link.MIDIIn.setBuffering(false);
    const bool open = ReopenPort(session, link.MIDIIn, link.form.MIDIInDevicesList, link.devices.inputNames(),
                                 "MIDI In port");
    if (open) SetInputFilters(session);
    return open;
}

bool MIDIOutDevicesList_Click(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    return ReopenPort(session, link.MIDIOut, link.form.MIDIOutDevicesList, link.devices.outputNames(),
                      "MIDI Out port");
}

bool MIDILearnInDeviceList_Click(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    link.MIDILearnIn.setBuffering(false);
    return ReopenPort(session, link.MIDILearnIn, link.form.MIDILearnInDeviceList, link.devices.inputNames(),
                      "MIDI Learn In port");
}

bool MIDISimOutDeviceList_Click(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    return ReopenPort(session, link.MIDISimOut, link.form.MIDISimOutDeviceList, link.devices.outputNames(),
                      "MIDI Simulation Out port");
}

long FreeMemoryValue(const std::string& text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ') ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (value > std::numeric_limits<long>::max() / 10 - 10) return negative ? -1 : std::numeric_limits<long>::max();
        value = value * 10 + (text[i] - '0');
    }
    return negative ? -value : value;
}

std::string PackLearnTolerance(const std::string& tolerance, int timeoutIndex, bool manual) {
    return MSBModule::Trim(tolerance) + "|" + std::to_string(timeoutIndex) + "I" + (manual ? "1" : "0");
}

void UnpackLearnTolerance(const std::string& packed, std::string& tolerance, int& timeoutIndex, bool& manual) {
    const auto bar = packed.find('|');
    timeoutIndex = 1;
    manual = false;
    if (bar == std::string::npos) {
        tolerance = packed;
        return;
    }
    tolerance = packed.substr(0, bar);
    const std::string rest = packed.substr(bar + 1);
    const auto i = rest.find('I');
    const long index = FreeMemoryValue(rest.substr(0, i));
    timeoutIndex = index >= 0 && index <= 2 ? static_cast<int>(index) : 1;
    manual = i != std::string::npos && FreeMemoryValue(rest.substr(i + 1)) != 0;
}

bool OKButton(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    MIDIFormState& form = link.form;
    MidiConfig& midi = session.midi;

    const long freeMemory = FreeMemoryValue(form.FreeMemText);
    if (freeMemory < 1000 || freeMemory > 70000) {
        session.prompter.message("Problem with Free Memory",
                                 "The value you entered for Free Memory seems out of order.  The basic PC1600(x) has "
                                 "20904 bytes free.  Please check your device.");
        return false;
    }
    if (form.MIDIInDevicesList.listIndex() < 0 || form.MIDIOutDevicesList.listIndex() < 0 ||
        form.MIDILearnInDeviceList.listIndex() < 0) {
        session.prompter.message("Cannot Exit",
                                 "You must specify the MIDI In and Out Ports which will allow this software to "
                                 "communicate with your PC1600(x).  If you don't want to specify a Learn Device now, "
                                 "just select any of them to get past this window.");
        return false;
    }

    midi.MIDIInDevice = form.MIDIInDevicesList.text();
    midi.MIDIOutDevice = form.MIDIOutDevicesList.text();
    midi.MIDILearnInDevice = form.MIDILearnInDeviceList.text();
    midi.MIDISimOutDevice =
        form.MIDISimOutDeviceList.listIndex() < 0 ? std::string(kNoDevice) : form.MIDISimOutDeviceList.text();
    midi.FreeMemory = freeMemory;
    midi.Printer = form.PrinterCombo.text();
    try {
        Database& db = session.pool.db();
        Transaction transaction(db);
        db.exec("DELETE FROM MIDIConfigTable");
        Statement insert = db.prepare(
            "INSERT INTO MIDIConfigTable (MIDIInDevice, MIDIOutDevice, MIDIInChannel, MIDILearnInDevice, "
            "MIDISimOutDevice, LearnTolerance, PC1600Model, FreeMemory, Printer) VALUES (:In, :Out, :Channel, "
            ":LearnIn, :SimOut, :Tolerance, :Model, :Free, :Printer)");
        insert.bind(":In", midi.MIDIInDevice)
            .bind(":Out", midi.MIDIOutDevice)
            .bind(":Channel", midi.DeviceId)
            .bind(":LearnIn", midi.MIDILearnInDevice)
            .bind(":SimOut", midi.MIDISimOutDevice)
            .bind(":Tolerance", PackLearnTolerance(link.LearnTolerance, midi.TimeoutIndex, midi.ManualMode))
            .bind(":Model", midi.PC1600Model)
            .bind(":Free", static_cast<std::int64_t>(freeMemory))
            .bind(":Printer", midi.Printer);
        insert.run();
        transaction.commit();
    } catch (const DatabaseError&) {
        session.prompter.message("Database Error", "There has been a Database Error");
    }
    // The windows that have the model's controls follow MidiConfig.
    midi.notifyChanged();
    SetInputFilters(session);
    form.Visible = false;
    form.notifyChanged();
    return true;
}

bool TestButton(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    MIDIFormState& form = link.form;
    MidiConfig& midi = session.midi;
    form.ControlsEnabled = false;
    form.notifyChanged();

    int found = -1;
    for (int channel = 0; channel < 16 && found < 0; ++channel) {
        midi.DeviceId = channel;
        form.Caption = std::string(kCaption) + " - TESTING CHANNEL " + std::to_string(channel + 1);
        midi.notifyChanged();
        form.notifyChanged();
        const std::string request = DeviceRequest(channel, DeviceCommand::RequestAllGlobals);
        link.MIDIIn.setBuffering(true);
        session.midiLink.TimedOut = false;
        link.waitTimer.setInterval(1500);
        link.waitTimer.start(session.clock.now());
        SetInputFilters(session);
        while (link.MIDIIn.count() >= 1) link.MIDIIn.remove();
        link.MIDIOut.sendSysex(request);
        waitUntil(session.pump, session.clock, std::numeric_limits<std::int64_t>::max(), [&] {
            link.waitTimer.update(session.clock.now(), session.midiLink.TimedOut);
            while (link.MIDIIn.count() > 0) {
                const std::string message = link.MIDIIn.current();
                if (message.size() >= 11 && IsDeviceMessage(message)) {
                    found = channel;
                    return true;
                }
                link.MIDIIn.remove();
            }
            return session.midiLink.TimedOut;
        });
        link.waitTimer.stop();
        if (found < 0) YieldWithTimers(session);
    }

    link.waitTimer.setInterval(45000);
    form.Caption = kCaption;
    form.ControlsEnabled = true;
    if (found >= 0) {
        midi.DeviceId = found;
        session.prompter.message("Received Response",
                                 "Your PC1600(x) was found on MIDI In Channel " + TwoDigits(found + 1) + "!");
    } else {
        midi.DeviceId = 0;
        session.prompter.message("Cannot Get Preset Edit Buffer",
                                 "There is no response from the PC1600(x) on any Channel.  Please check your MIDI "
                                 "Setup.");
    }
    midi.notifyChanged();
    form.notifyChanged();
    return found >= 0;
}

bool LoadMidiConfiguration(const LinkContext& session) {
    MidiLink& link = session.midiLink;
    MIDIFormState& form = link.form;
    MidiConfig& midi = session.midi;

    bool haveRow = false;
    try {
        Statement select = session.pool.db().prepare("SELECT * FROM MIDIConfigTable");
        if (select.step()) {
            haveRow = true;
            midi.MIDIOutDevice = select.getText("MIDIOutDevice");
            midi.MIDIInDevice = select.getText("MIDIInDevice");
            const std::int64_t channel = select.getInt("MIDIInChannel");
            midi.DeviceId = channel >= 0 && channel <= 15 ? static_cast<int>(channel) : 0;
            midi.MIDILearnInDevice = select.getText("MIDILearnInDevice");
            midi.MIDISimOutDevice = select.getText("MIDISimOutDevice");
            UnpackLearnTolerance(select.getText("LearnTolerance"), link.LearnTolerance, midi.TimeoutIndex,
                                 midi.ManualMode);
            midi.PC1600Model = select.getBool("PC1600Model");
            midi.FreeMemory = static_cast<long>(select.getInt("FreeMemory"));
            midi.Printer = select.getText("Printer");
        }
    } catch (const DatabaseError&) {
        session.prompter.message("Database Error", "There has been a Database Error");
    }
    if (!haveRow) {
        midi.MIDIInDevice = midi.MIDIOutDevice = midi.MIDILearnInDevice = midi.MIDISimOutDevice = kNoDevice;
        midi.ManualMode = false;
        midi.TimeoutIndex = 1;
    }
    form.FreeMemText = std::to_string(midi.FreeMemory);
    if (haveRow) form.PrinterCombo.setListIndex(form.PrinterCombo.findText(midi.Printer));
    else form.PrinterCombo.setListIndex(form.PrinterCombo.listCount() > 0 ? 0 : -1);

    const auto outputs = link.devices.outputNames();
    const auto inputs = link.devices.inputNames();
    FillDeviceList(form.MIDIOutDevicesList, outputs, midi.MIDIOutDevice);
    FillDeviceList(form.MIDISimOutDeviceList, outputs, midi.MIDISimOutDevice);
    FillDeviceList(form.MIDIInDevicesList, inputs, midi.MIDIInDevice);
    FillDeviceList(form.MIDILearnInDeviceList, inputs, midi.MIDILearnInDevice);

    const bool firstRun = midi.MIDIOutDevice == kNoDevice;
    if (firstRun) {
        // Nothing configured and nothing but the virtual device to talk to:
        // a new user without hardware starts on it.
        // ALSA's "Midi Through" port is on every Linux machine and leads
        // nowhere: it doesn't count as a device.
        const auto onlyVirtualIn = [](const std::vector<std::string>& names) {
            return std::all_of(names.begin(), names.end(), [](const std::string& name) {
                return name == kVirtualDeviceName || name.find("Midi Through") != std::string::npos;
            });
        };
        const bool onlyVirtual = onlyVirtualIn(inputs) && onlyVirtualIn(outputs);
        if (onlyVirtual)
            for (ListState* list : {&form.MIDIInDevicesList, &form.MIDIOutDevicesList, &form.MIDILearnInDeviceList,
                                    &form.MIDISimOutDeviceList})
                list->setListIndex(list->findText(kVirtualDeviceName));
    }
    MIDIOutDevicesList_Click(session);
    MIDIInDevicesList_Click(session);
    MIDILearnInDeviceList_Click(session);
    MIDISimOutDeviceList_Click(session);
    SetInputFilters(session);
    form.Visible = firstRun;
    midi.notifyChanged();
    form.notifyChanged();
    return firstRun;
}

}  // namespace tavlo
