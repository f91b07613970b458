#include "LedgerService/Mail/MailMessage.h"

#include <algorithm>

#include <fmt/chrono.h>
#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Text/Naming.h"

namespace LedgerService {

namespace {

constexpr std::string_view wordStart = "=?utf-8?Q?";
constexpr std::string_view wordEnd = "?=";
constexpr std::size_t longestWord = 75;
constexpr std::size_t longestLine = 76;
/// The longest header whose field name and text still fit on one line.
constexpr std::size_t longestPlainText = 60;

bool isLetterOrDigit(char each)
{
    return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z') || (each >= '0' && each <= '9');
}

std::string quoted(char byte)
{
    return fmt::format("={:02X}", static_cast<unsigned char>(byte));
}

bool continuesCodePoint(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The bytes of the code point at the front, as they stand in an encoded word.
std::string takeEncoded(std::string_view& rest)
{
    std::size_t length = 1;
    while (length < rest.size() && continuesCodePoint(rest[length]))
        ++length;
    std::string encoded;
    for (const char each : rest.substr(0, length))
        encoded += each == ' ' ? "_" : isLetterOrDigit(each) ? std::string{each} : quoted(each);
    rest.remove_prefix(length);
    return encoded;
}

bool isPlain(std::string_view text)
{
    return text.size() <= longestPlainText && !text.contains("=?") &&
           std::ranges::all_of(text, [](char each) { return each >= 0x20 && each < 0x7F; });
}

/// One line of the text, broken where it is too long for the body of a mail.
void appendLine(std::string& body, std::string_view line)
{
    std::size_t used = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char each = line[at];
        const bool last = at + 1 == line.size();
        const bool blank = each == ' ' || each == '\t';
        const bool safe = (each > 0x20 && each < 0x7F && each != '=') || (blank && !last);
        const auto piece = safe ? std::string{each} : quoted(each);
        if (used + piece.size() > longestLine - 1) { // room for the sign that the line goes on
            body += "=\r\n";
            used = 0;
        }
        body += piece;
        used += piece.size();
    }
    body += "\r\n";
}

std::string dateText(std::chrono::system_clock::time_point instant)
{
    const auto seconds = std::chrono::system_clock::to_time_t(instant);
    return fmt::format("{:%a, %d %b %Y %H:%M:%S} +0000", fmt::gmtime(seconds));
}

}

std::string MailMessage::of(const Mail& mail, std::string_view sender, std::chrono::system_clock::time_point instant,
                            std::string_view name)
{
    require(Naming::isEmail(mail.to) && Naming::isEmail(sender), "mail goes from one address to one address");
    std::string message;
    const auto add = [&](std::string_view field, std::string_view text) {
        message += fmt::format("{}: {}\r\n", field, text);
    };
    add("Date", dateText(instant));
    add("Message-ID", fmt::format("<{}@{}>", name, sender.substr(sender.find('@') + 1)));
    add("From", fmt::format("Tallyfold <{}>", sender));
    add("To", fmt::format("<{}>", mail.to));
    add("Subject", headerText(mail.subject));
    add("MIME-Version", "1.0");
    add("Content-Type", "text/plain; charset=utf-8");
    add("Content-Transfer-Encoding", "quoted-printable");
    add("Content-Language", mail.locale);
    add("Auto-Submitted", "auto-generated"); // nobody's holiday greeting answers it
    return message + "\r\n" + body(mail.text);
}

std::string MailMessage::headerText(std::string_view text)
{
    if (isPlain(text))
        return std::string{text};
    std::string header{wordStart};
    auto used = wordStart.size();
    while (!text.empty()) {
        const auto piece = takeEncoded(text);
        if (used + piece.size() + wordEnd.size() > longestWord) {
            header += fmt::format("{}\r\n {}", wordEnd, wordStart);
            used = wordStart.size();
        }
        header += piece;
        used += piece.size();
    }
    return header.append(wordEnd);
}

std::string MailMessage::body(std::string_view text)
{
    std::string body;
    while (!text.empty()) {
        const auto end = text.find('\n');
        appendLine(body, text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return body;
}

}
