#pragma once

#include <functional>

#include <QCoro/QCoroTask>

/// Runs the event loop until the condition holds. Stops the program when it does not within half a minute.
void waitUntil(const std::function<bool()>& condition);

/// Runs the event loop until the task ends, and gives its result.
template <class Value>
Value resultOf(QCoro::Task<Value> task)
{
    waitUntil([&] { return task.isReady(); });
    return QCoro::waitFor(task);
}
