#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

#include <QString>

/// What the status bar of the workspace tells, from what is known of the data.
struct WorkspaceStatus {
    QString refresh;
    QString refreshHint;
    QString count;
    QString unconfirmed; // how many requests were not confirmed; empty for none
    bool isWarning = false;
};

/// What is known: when the data was last fresh, whether it is on its way, whether the last try failed.
struct WorkspaceFreshness {
    std::optional<std::chrono::system_clock::time_point> lastRefresh;
    bool isBusy = false;
    bool isStale = false;
    std::size_t entries = 0;
    std::size_t unconfirmed = 0; // requests that the service has not confirmed
};

WorkspaceStatus workspaceStatus(const WorkspaceFreshness& freshness, std::string_view locale);
