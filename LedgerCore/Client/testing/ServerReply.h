#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

/// A request as `ScriptedServer` received it.
struct ServerRequest {
    std::string method;
    std::string path;                           // with its leading slash
    std::map<std::string, std::string> headers; // names in lower case
    std::string body;

    /// The header's value, or an empty text.
    [[nodiscard]] std::string header(const std::string& name) const
    {
        const auto found = headers.find(name);
        return found == headers.end() ? std::string{} : found->second;
    }
};

/// What `ScriptedServer` does with a request.
struct ServerReply {
    enum class Kind { whole, parked, dropped, raw, cutShort, dripping };

    Kind kind = Kind::whole;
    int status = 200;
    std::string body = {};
    std::vector<std::string> headers = {}; // whole lines
    std::chrono::milliseconds pause{0};    // between the bytes of a dripping body

    static ServerReply json(std::string body, int status = 200) { return {.status = status, .body = std::move(body)}; }
    /// The service's refusal of this status and code.
    static ServerReply error(int status, const std::string& code)
    {
        return json(R"({"error":{"code":")" + code + R"(","message":"not for people"}})", status);
    }
    static ServerReply redirect(const std::string& location)
    {
        return {.status = 302, .headers = {"Location: " + location}};
    }
    /// Says nothing until `ScriptedServer::release`.
    static ServerReply parked() { return {.kind = Kind::parked}; }
    /// Closes the connection instead of answering.
    static ServerReply dropped() { return {.kind = Kind::dropped}; }
    /// Sends these bytes as they stand, then closes the connection.
    static ServerReply raw(std::string bytes) { return {.kind = Kind::raw, .body = std::move(bytes)}; }
    /// Announces one byte more than it sends, then closes the connection.
    static ServerReply cutShort(std::string body) { return {.kind = Kind::cutShort, .body = std::move(body)}; }
    /// Sends the head, then a byte of the body every `pause`; with a long pause, as good as nothing.
    static ServerReply dripping(std::string body, std::chrono::milliseconds pause)
    {
        return {.kind = Kind::dripping, .body = std::move(body), .pause = pause};
    }
};
