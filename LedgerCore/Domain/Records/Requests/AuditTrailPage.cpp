#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"

#include <utility>

namespace Json::Detail {

namespace {

/// Reads a value of any type; `path` names it.
struct AnyValue {
    std::map<std::string, std::string, std::less<>>& texts;
    std::string path;

    Outcome read(Reader& in)
    {
        if (in.isNull())
            return std::nullopt;
        // A value that is not of the type that is tried stays unread.
        if (std::string text; !in.read(text))
            return keep(std::move(text));
        if (bool truth = false; !in.read(truth))
            return keep(truth ? "true" : "false");
        if (std::int64_t number = 0; !in.read(number))
            return keep(std::to_string(number));
        const auto failed = in.eachField(this, [](void* context, std::string_view key, Reader& field) {
            const auto& self = *static_cast<AnyValue*>(context);
            const auto lead = self.path.empty() ? std::string{} : self.path + ".";
            return AnyValue{.texts = self.texts, .path = lead + std::string{key}}.read(field);
        });
        return failed == DecodeError::wrongType ? readList(in) : failed;
    }

    /// A list of plain values is one text; of records, each is counted from 1.
    Outcome readList(Reader& in)
    {
        int at = 0;
        std::pair<AnyValue*, int*> context{this, &at};
        return in.eachElement(
            &context,
            [](void* given, Reader& element) {
                auto& [self, count] = *static_cast<std::pair<AnyValue*, int*>*>(given);
                std::map<std::string, std::string, std::less<>> parts;
                if (const auto failed = AnyValue{.texts = parts, .path = {}}.read(element))
                    return Outcome{failed};
                ++*count;
                for (auto& [name, text] : parts) {
                    if (name.empty())
                        self->keep(std::move(text));
                    else
                        self->texts[self->path + " " + std::to_string(*count) + "." + name] = std::move(text);
                }
                return Outcome{};
            },
            [](void* /*context*/, std::size_t /*elements*/) {});
    }

    Outcome keep(std::string text)
    {
        auto& kept = texts[path];
        kept = kept.empty() ? std::move(text) : kept + ", " + text;
        return std::nullopt;
    }
};

}

Outcome readValue(Reader& in, AuditValues& out)
{
    out.texts.clear();
    return AnyValue{.texts = out.texts, .path = {}}.read(in);
}

}
