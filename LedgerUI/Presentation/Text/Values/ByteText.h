#pragma once

#include <cstdint>
#include <string_view>

#include <QString>

/// "412 KB", "1.1 MB".
QString byteText(std::int64_t bytes, std::string_view locale);
