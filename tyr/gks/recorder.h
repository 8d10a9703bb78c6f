#pragma once

/// The redraw store: on a display each call of a primitive or of an attribute's setter is kept as
/// an object, so that the picture can be drawn again, there or on paper.

#include "tyr/gks/state.h"

/// What an object calls when it is replayed.
enum ObjectKind : int {
    kObjMessage = 5,
    kObjWsViewport = 10,
    kObjWsWindow = 11,
    kObjSelectTran = 15,
    kObjViewport = 16,
    kObjWindow = 17,
    kObjColour = 20,
    kObjClearRegion = 25,
    kObjPolyline = 30,
    kObjLineType = 33,
    kObjLineWidth = 34,
    kObjLineColour = 35,
    kObjPolymarker = 40,
    kObjMarkerType = 43,
    kObjMarkerSize = 44,
    kObjMarkerColour = 45,
    kObjMarkerWidth = 46,
    kObjText = 50,
    kObjTextSpacing = 53,
    kObjCharSpace = 54,
    kObjExpansion = 55,
    kObjTextColour = 56,
    kObjCharHeight = 57,
    kObjCharUp = 58,
    kObjFont = 59,
    kObjTextAlign = 60,
    kObjTextWidth = 61,
    kObjFillArea = 70,
    kObjFillInterior = 73,
    kObjFillStyle = 74,
    kObjFillColour = 75,
    kObjFillBlack = 76,
    kObjSegmentBegin = 81,
    kObjSegmentEnd = 82,
    kObjFunction = 999,
};

struct RedrawObject {
    int kind;
    RedrawObject *next; ///< null at the end
    int value;          ///< an integer argument, a count of points, a number of a transformation
    void *data;         ///< argument block, owned by the store; null without one
};

/// A function of the program and what it gets; the store frees the argument by free().
struct ObjectFunction {
    void (*function)(void *);
    void *argument;
};

/// Attributes and transformations as they stood when the store was emptied: what a replay begins
/// with.
struct ObjectStart {
    TransformationState tran;
    LineState line;
    MarkerState marker;
    FillState fill;
    TextState text;
};

/// Empties the store. The environment variable `tyrredraw`, or else the X11 default `redraw`, with
/// the value "no" turns recording off.
void gobj_init();
/// Keeps an object with a copy of `size` bytes of data (null: left for the caller to fill).
/// Returns its block; null when nothing is kept or there is no block. Every 500th call handles
/// waiting events, kept or not.
void *gobj_new(int kind, int value, int size, const void *data);
/// Keeps a call of a function of the program.
void gobj_add_function(void (*function)(void *), void *argument);
/// Frees all objects.
void gobj_clear();

/// The first object; null in an empty store. How many there are.
RedrawObject *gobj_first();
int gobj_count();
/// What a replay begins with.
const ObjectStart &gobj_start();

/// What handles waiting events; null for nothing. Set by the event loop.
void gobj_set_pump(void (*pump)());
/// Handles waiting events now.
void gobj_pump();

/// Takes a segment's objects out of the store, from its begin to its end marker.
void gobj_remove_segment(int id);

/// Short forms for the setters: one integer; n floats; two integers.
void record(ObjectKind kind, int value);
void record(ObjectKind kind, int value, int n, const float *numbers);
void record(ObjectKind kind, const int pair[2]);
