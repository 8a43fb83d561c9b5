#pragma once

#include "CMatrixSDK.h"
#include "Message.h"
#include "core/DecoderConfig.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vdec {

class AccountBook;
class Outbox;
class Wall;

// What one connection knows about its peer.
struct Session {
    uint64_t connectionId = 0;
    bool loggedIn = false;
    std::string user;
    std::shared_ptr<Outbox> outbox; // messages pushed to this connection from other threads
};

// Everything a request handler may touch; the caller holds the state lock.
struct RequestContext {
    Session& session;
    Wall& wall;
    AccountBook& accounts;
    bool& activated;
    const DecoderConfig& config;
};

// The answer a handler produced: result code and payload (answer body only).
struct Outcome {
    int32_t status = 0;
    std::vector<uint8_t> payload;
};

// Maps request types to handlers, and knows which need a login and which change
// the state that is saved.
class RequestRouter {
public:
    using Type = cmatrix::wire::MessageType;
    using Handler = std::function<Outcome(RequestContext&, const cmatrix::wire::Message&)>;
    enum Flags { None = 0, Public = 1, Mutates = 2 };

    void add(Type type, int flags, Handler handler);

    struct Result {
        Outcome outcome;
        bool changed = false; // succeeded and changed saved state
    };
    Result route(RequestContext& context, const cmatrix::wire::Message& message) const;

    // Helpers for handlers.
    template <class Body> static Outcome answer(const Body& body)
    {
        Outcome out;
        cmatrix::wire::PayloadWriter writer(out.payload);
        body.visit(writer);
        return out;
    }
    static Outcome status(int32_t code) { return Outcome { code, {} }; }
    // Decodes the request body and runs f on it; a body that does not parse exactly
    // is answered CMATRIX_ERR_PROTOCOL.
    template <class Body, class F> static Outcome with(const cmatrix::wire::Message& message, F&& f)
    {
        Body body;
        if (!message.decode(body))
            return status(CMATRIX_ERR_PROTOCOL);
        return f(body);
    }

private:
    struct Entry {
        int flags = None;
        Handler handler;
    };
    std::map<Type, Entry> entries_;
};

} // namespace vdec
