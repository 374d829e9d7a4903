#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "dalvo/configuration/configuration.h"
#include "tests/support/record_fields.h"

namespace dalvo::testing {

/// What a field holds, copied out of its record.
using FieldValue = std::variant<bool, std::int32_t, double, std::string, std::vector<std::string>>;

inline FieldValue value_of(const Field &field)
{
    return std::visit([](const auto *at) { return FieldValue(*at); }, field.at);
}

/// Bit for bit, but every NaN is equal to every other: 0.0 differs from -0.0.
inline bool same_double(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

inline bool same_value(const FieldValue &a, const FieldValue &b)
{
    const double *const number = std::get_if<double>(&a);
    const double *const other = std::get_if<double>(&b);
    return number != nullptr && other != nullptr ? same_double(*number, *other) : a == b;
}

/// The fields of a record that is only read.
inline std::vector<Field> fields_of_const(const Configuration &c)
{
    return fields_of(const_cast<Configuration &>(c));
}

/// Field `name` of `c` ("dpll.restart_strategy" for one of a sub-record). Throws std::out_of_range when there is none.
inline Field field_named(Configuration &c, const std::string &name)
{
    for (const Field &field : fields_of(c)) {
        if (field.name == name) {
            return field;
        }
    }
    throw std::out_of_range("no field " + name);
}

inline FieldValue value_named(const Configuration &c, const std::string &name)
{
    return value_of(field_named(const_cast<Configuration &>(c), name));
}

/// Stores `value` into the field. Throws std::bad_variant_access when it is not of the field's type.
inline void store(const Field &field, const FieldValue &value)
{
    std::visit([&](auto *at) { *at = std::get<std::remove_pointer_t<decltype(at)>>(value); }, field.at);
}

inline void set_field(Configuration &c, const std::string &name, const FieldValue &value)
{
    store(field_named(c, name), value);
}

/// The names of the fields in which `a` and `b` differ, in the record's order. NaN is equal to NaN; other doubles are
/// compared by their bits.
inline std::vector<std::string> differing_fields(const Configuration &a, const Configuration &b)
{
    const std::vector<Field> of_a = fields_of_const(a);
    const std::vector<Field> of_b = fields_of_const(b);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < of_a.size(); ++i) {
        if (!same_value(value_of(of_a[i]), value_of(of_b[i]))) {
            names.push_back(of_a[i].name);
        }
    }
    return names;
}

/// A record whose every field holds an odd value: numbers and strings are negative or outlandish, no two fields of a
/// record hold the same one, and no two variants the same one in a field. A Boolean differs between an even and an odd
/// `variant`, and between a field and the next Boolean of the record.
inline Configuration sentinel_record(int variant)
{
    Configuration record;
    std::int32_t place = 0;
    bool flag = variant % 2 != 0;
    for (const Field &field : fields_of(record)) {
        ++place;
        const std::string text = "\x01 " + field.name + " #" + std::to_string(variant);
        const std::int32_t number = -100000 * (variant + 1) - 7 * place;
        if (bool *const *at = std::get_if<bool *>(&field.at)) {
            **at = flag;
            flag = !flag;
        } else if (std::int32_t *const *at_integer = std::get_if<std::int32_t *>(&field.at)) {
            **at_integer = number;
        } else if (double *const *at_double = std::get_if<double *>(&field.at)) {
            **at_double = number + 0.1; // no float reads so
        } else if (std::string *const *at_string = std::get_if<std::string *>(&field.at)) {
            **at_string = text;
        } else {
            *std::get<std::vector<std::string> *>(field.at) = {text, "", text + ",ALL"};
        }
    }
    return record;
}

} // namespace dalvo::testing
