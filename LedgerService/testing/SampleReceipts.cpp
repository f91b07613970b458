#include "LedgerService/testing/SampleReceipts.h"

#include <boost/beast/core/detail/base64.hpp>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Attachment.h"

namespace LedgerService {

using std::string_literals::operator""s;

std::string SampleReceipts::jpeg()
{
    return "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00"
           "\xFF\xC0\x00\x0B\x08\x00\x01\x00\x01\x01\x01\x11\x00"
           "\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00\x2A\xFF\xD9"s;
}

std::string SampleReceipts::png()
{
    return "\x89PNG\r\n\x1A\n\x00\x00\x00\x0DIHDR\x00\x00\x00\x01\x00\x00\x00\x01\x08\x00\x00\x00\x00...."
           "\x00\x00\x00\x02"
           "IDATxy....\x00\x00\x00\x00IEND...."s;
}

std::string SampleReceipts::heic()
{
    return "\x00\x00\x00\x18"
           "ftypheic\x00\x00\x00\x00mif1heic\x00\x00\x00\x0Cmeta\x00\x00\x00\x00\x00\x00\x00\x0Cmdat\x01\x02\x03\x04"s;
}

std::string SampleReceipts::pdf(std::size_t bytes, char filling)
{
    const auto begin = "%PDF-1.7\n1 0 obj\n<< /Type /Catalog >>\nendobj\n"s;
    const auto end = "\nstartxref\n9\n%%EOF\n"s;
    return begin + std::string(bytes - begin.size() - end.size(), filling) + end;
}

std::string SampleReceipts::upload(std::string_view content, std::string_view mediaType, std::string_view name)
{
    namespace base64 = boost::beast::detail::base64;
    Upload upload{std::string{name}, std::string{mediaType}, std::string(base64::encoded_size(content.size()), '\0')};
    upload.dataBase64.resize(base64::encode(upload.dataBase64.data(), content.data(), content.size()));
    return Json::encode(upload);
}

}
