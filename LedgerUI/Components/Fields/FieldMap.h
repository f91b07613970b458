#pragma once

#include <functional>
#include <map>

#include <QWidget>

#include "LedgerUI/Components/Fields/FieldError.h"

/// The fields of a form by what its problems call them, in the order of the form.
template <class Field>
class FieldMap {
public:
    /// `control` answers which control takes the focus for the field.
    void add(Field field, FieldError& error, std::function<QWidget*()> control)
    {
        m_places.insert_or_assign(field, Place{&error, std::move(control)});
    }
    void add(Field field, FieldError& error)
    {
        add(field, error, [&error] { return error.field(); });
    }

    /// Each message under its field, and none under the others.
    void present(const std::map<Field, QString>& messages) const
    {
        for (const auto& [field, place] : m_places) {
            const auto found = messages.find(field);
            place.error->present(found == messages.end() ? QString{} : found->second);
        }
    }

    [[nodiscard]] QWidget* control(Field field) const { return m_places.at(field).control(); }

    /// The first that shows a message; null when there is none.
    [[nodiscard]] QWidget* firstWrong() const
    {
        for (const auto& [field, place] : m_places) {
            if (place.error->isShown())
                return place.control();
        }
        return nullptr;
    }
    /// Where the first of these messages stands; null when there is none.
    [[nodiscard]] QWidget* firstOf(const std::map<Field, QString>& messages) const
    {
        return messages.empty() ? nullptr : control(messages.begin()->first);
    }

private:
    struct Place {
        FieldError* error = nullptr;
        std::function<QWidget*()> control;
    };
    std::map<Field, Place> m_places;
};
