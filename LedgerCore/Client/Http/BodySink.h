#pragma once

#include <string>

/// Takes the body of a successful reply while it arrives. Called on the main thread, in order.
class BodySink {
public:
    BodySink() = default;
    virtual ~BodySink() = default;
    BodySink(const BodySink&) = delete;
    BodySink& operator=(const BodySink&) = delete;

    virtual void take(std::string bytes) = 0;
};
