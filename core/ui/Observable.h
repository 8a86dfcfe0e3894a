#pragma once
#include <functional>
#include <map>

namespace tavlo {

// The one change-notification mechanism of core. A state object derives from
// Observable and calls notifyChanged() after it changed; a window subscribes
// and refreshes what it shows from the state.
class Observable {
public:
    using Token = int;
    using Handler = std::function<void()>;

    Token subscribe(Handler handler) {
        const Token token = nextToken_++;
        handlers_.emplace(token, std::move(handler));
        return token;
    }
    void unsubscribe(Token token) { handlers_.erase(token); }

    void notifyChanged() {
        // A handler may unsubscribe itself; iterate over a copy.
        const auto handlers = handlers_;
        for (const auto& [token, handler] : handlers) handler();
    }

protected:
    Observable() = default;
    Observable(const Observable&) {}
    Observable& operator=(const Observable&) { return *this; }

private:
    std::map<Token, Handler> handlers_;
    Token nextToken_ = 1;
};

}  // namespace tavlo
