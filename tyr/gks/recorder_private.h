#pragma once

#include "tyr/gks/recorder.h"
#include "tyr/gks/state_private.h"

namespace tyr {

/// Attributes and transformations as they stood when the store was emptied: what a replay begins
/// with.
struct ObjectStart {
    TransformationState tran;
    LineState line;
    MarkerState marker;
    FillState fill;
    TextState text;
};

/// What a replay begins with.
const ObjectStart &gobj_start();

/// Short forms for the setters: one integer; n floats; two integers.
void record(ObjectKind kind, int value);
void record(ObjectKind kind, int value, int n, const float *numbers);
void record(ObjectKind kind, const int pair[2]);

} // namespace tyr
