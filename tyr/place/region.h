#pragma once

#include <cstddef>

#include "tyr/base/menu.h"
#include "tyr/geo/domain.h"

/// Names for domains: the region file ("tyr.reg"), the built-in regions that work without it, and
/// the station priority that follows from the size of a domain.
///
/// A region file is text, one region a line: abbreviation, description with "_" for a blank, 1 if
/// the region is listed in menus, domain text. Lines that begin with "#" are comments, a blank line
/// ends the file for lookups.

/// Room of a domain text that DOM_region_lookup gives.
inline constexpr size_t kDomainTextRoom = 501;
inline constexpr const char *kRegionFile = "tyr.reg"; ///< where `file_path` leads
inline constexpr int kMaxRegions = 20; ///< rows of the region table with its row 0, "back"

/// The built-in region that asks the user for its centre.
inline constexpr const char *kVariableRegion = "var";

/// Fills the region table from a file found through `file_path`. @return 1; 0 if it can't be opened
int DOM_read_regions(const char *file);

/// The region table as rows of a menu, ended by a null text. Row 0 goes back.
const MenuRow *DOM_region_table();

/// Whether a region file has been read.
bool DOM_has_regions();

/// Domain text of a region.
///
/// @param     word  abbreviation, any case; null for the first region of the file. A line of one
///                  word answers every question with that word
/// @param[out] out  room kDomainTextRoom
/// @return    1; 0 if the file can't be opened (told at mask 0x80000000) or has no such region
int DOM_region_lookup(const char *file, const char *word, char *out);

/// Domain of a built-in region: us ne at se mw sp nw sw, or var, which asks for its centre.
/// @return 1; 0 for an unknown word
int DOM_builtin_region(const char *word, DomainRec *out);

/// Tells at warn that a word is no region, with the nearest of the file and the built-in ones.
void DOM_warn_region(const char *word);

/// Fixes the station priority, 1 (chief stations only) to 6, from the height of a domain in plot
/// units; the resource `stat_prior` sets it ("4") or shifts it ("+1", "-1").
void DOM_set_priority(float height);
int DOM_get_priority();
