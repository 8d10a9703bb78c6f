#pragma once

/// What part of what plot space a picture shows. One record serves a map and a time-height section
/// alike: the projection code tells them apart, and the fields change meaning with it.

#include "tyr/geo/domain_rec.h"

/// All fields Missing, `ellipsoid` 0.
void DOM_init(DomainRec *domain);

/// Makes a domain current: works out the constants of its projection and its window.
/// @return 0; -1 for null, which leaves no projection
int DOM_set(const DomainRec *domain);

/// Copies the current domain out and returns `out`; returns the current record itself for null.
DomainRec *DOM_get(DomainRec *out);

/// Window of the current domain in plot units: x minimum, x maximum, y minimum, y maximum.
void DOM_get_window(float out[4]);

int DOM_get_proj();
float DOM_get_clat();
float DOM_get_clon();

/// Width to height ratio of the picture, (nx - 1) / (ny - 1); 1.0 where one of them isn't above 1.
float DOM_aspect(const DomainRec *domain);

/// 1 if a plot point lies in the window widened by 3 dx and 3 dy on each side; always 1 without a
/// projection.
int DOM_near_window(float x, float y);

/// 1 if two domains show the same; a Missing pole counts as equal to the other's centre.
int DOM_equal(const DomainRec *a, const DomainRec *b);

/// Stores the viewport (normalised, x0, x1, y0, y1) that skewed plot spaces need.
void DOM_set_viewport(const float in[4]);
