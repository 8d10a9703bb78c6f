#pragma once

// The attributes of the kernel, one row each: what the redraw store calls it, the word of a
// metafile, the setter. Setters pass new values on, the replay and the metafile reader set them.

#include <string_view>
#include <variant>

#include "tyr/gks/object_kind.h"

namespace tyr {

using SetInt = int (*)(int value);
using SetReal = int (*)(float value);
using SetIntPair = int (*)(const int pair[2]);
using SetVector = int (*)(const float vector[2]);
/// A number of a transformation or workstation and a rectangle.
using SetRect = int (*)(int number, const float rect[4]);
using Setter = std::variant<SetInt, SetReal, SetIntPair, SetVector, SetRect>;

struct Attribute {
    ObjectKind kind;
    const char *word; ///< null: not in a metafile
    Setter set;
};

/// Null where there is none.
const Attribute *attribute_of(int kind);
const Attribute *attribute_of(std::string_view word);

/// Passes the new value of an attribute on: to the device that keeps calls, or else to the redraw
/// store and to the device, which finds it in the kernel's state.
void pass_on(ObjectKind kind, int value);
void pass_on(ObjectKind kind, float value);
void pass_on(ObjectKind kind, const int pair[2]);
void pass_on(ObjectKind kind, const float vector[2]);
void pass_on(ObjectKind kind, int number, const float rect[4]);

/// Stores a value and passes it on where it is a new one.
template <class Value> void set_attribute(ObjectKind kind, Value &stored, Value value)
{
    if (stored != value) {
        stored = value;
        pass_on(kind, value);
    }
}

} // namespace tyr
