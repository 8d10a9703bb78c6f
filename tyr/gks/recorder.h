#pragma once

/// The redraw store: on a display each call of a primitive or of an attribute's setter is kept as
/// an object, so that the picture can be drawn again, there or on paper.

#include "tyr/gks/object_kind.h"

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

/// The first object; null in an empty store.
RedrawObject *gobj_first();
/// How many there are.
int gobj_count();

/// What handles waiting events; null for nothing. Set by the event loop.
void gobj_set_pump(void (*pump)());
/// Handles waiting events now.
void gobj_pump();

/// Takes a segment's objects out of the store, from its begin to its end marker.
void gobj_remove_segment(int id);
