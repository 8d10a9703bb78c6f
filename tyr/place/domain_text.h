#pragma once

#include "tyr/geo/domain.h"
#include "tyr/geo/projection_words.h"

/// Domains as texts: a region word, or comma-separated fields with a projection in front.
///
/// Fields, in the order of the fifteen forms: proj[:plon] or proj[:e][:plat:plon:parm1...parm4],
/// plon, clat, clon, nx, ny, dx, dy; a region word, "file:word" or "fi:file". In the place of clat
/// and clon may stand one field "id:station" or "id:file:station" of the city database.

enum DomainForm {
    kDomainNumbers = 1,
    kDomainRegion = 2,
};

/// Reads a domain text: the first form that fits.
///
/// Sets settings slot kPrmDomainForm to the result, the file key 'r' to the text and the station
/// priority from the domain's height.
/// @return DomainForm; -1 for an invalid text (told), kMissingInt for null, empty or "miss". A word
///         that is no region gives kDomainRegion with proj -1
int DOM_decode(const char *text, DomainRec *out);

/// Domain of a program: the resource `plot_domain` (modes 1, 3 and 4), else `region`, else (mode 4)
/// the first region of the region table. @return result of DOM_decode; 0 where nothing is told
int DOM_from_resources(DomainRec *out, int mode);

/// True of a domain that a picture can show: a projection with a formula, and finite place, spacing
/// and size, none of them 0.
bool DOM_is_usable(const DomainRec *domain);

/// Shows a domain as a text that DOM_decode reads.
void DOM_print(int mask, const DomainRec *domain);
