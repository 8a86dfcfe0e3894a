#pragma once
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "midilink/MidiBackend.h"

namespace tavlo {

class Clock;

// Devices that exist only inside the program: what is sent to output "X"
// arrives at every input open on "X". Tests use it as a scripted device:
// `onSend` sees every message sent, `inject` delivers as if a device spoke.
class LoopbackBackend : public MidiBackend {
public:
    explicit LoopbackBackend(std::vector<std::string> names, const Clock* clock = nullptr);
    ~LoopbackBackend() override;

    std::vector<std::string> inputNames() override { return names_; }
    std::vector<std::string> outputNames() override { return names_; }
    std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink, std::string& error) override;
    std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) override;

    // Delivers to every open input of that name.
    void inject(const std::string& name, const std::string& bytes);
    // Names that refuse to open, with the reason given.
    void refuse(const std::string& name, std::string reason) { refused_[name] = std::move(reason); }

    // Every message sent, by output name, in order.
    std::vector<std::pair<std::string, std::string>> sent;
    // Runs after a message was sent to output `name`; may inject replies.
    std::function<void(const std::string& name, const std::string& bytes)> onSend;
    // When false, a sent message doesn't loop back to the inputs.
    bool echo = true;

    int openInputs() const { return static_cast<int>(inputs_.size()); }

private:
    class Input;
    class Output;
    friend class Input;
    friend class Output;
    void delivered(const std::string& name, const std::string& bytes);

    std::vector<std::string> names_;
    const Clock* clock_;
    std::map<std::string, std::string> refused_;
    std::multimap<std::string, Input*> inputs_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tavlo
