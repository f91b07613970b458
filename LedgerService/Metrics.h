#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

/// What the process has done since its start, counted, and how it stands. It names routes and outcomes, never what a
/// request carried.
namespace Metrics {

void request(std::string_view pattern, int status, std::chrono::microseconds took);

/// How something stands at this moment.
struct Gauge {
    std::string_view name; // of the table of figures
    double value = 0;
    std::string_view state = {}; // of the label of this name, for a figure that has one
};

/// All figures in the text form that Prometheus collects: the given ones, and what every process can tell of itself.
std::string text(const std::vector<Gauge>& gauges = {});

/// The table of figures in Markdown.
std::string table();

inline constexpr std::string_view connections = "tallyfold_connections";
inline constexpr std::string_view commandsWaiting = "tallyfold_commands_waiting";
inline constexpr std::string_view oldestCommand = "tallyfold_oldest_command_wait_seconds";
inline constexpr std::string_view signInsWaiting = "tallyfold_sign_ins_waiting";
inline constexpr std::string_view bodyBytes = "tallyfold_unfinished_body_bytes";
inline constexpr std::string_view replyBytes = "tallyfold_unread_reply_bytes";
inline constexpr std::string_view databaseBytes = "tallyfold_database_file_bytes";
inline constexpr std::string_view logBytes = "tallyfold_database_log_bytes";
inline constexpr std::string_view certificateEnd = "tallyfold_certificate_expiry_timestamp_seconds";
inline constexpr std::string_view receiptBytes = "tallyfold_receipt_bytes";

}

}
