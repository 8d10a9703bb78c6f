#pragma once

struct CityRec;

/// The language that selects stations: a list of words, any of which may hold. A word is parts
/// joined by ":", all of which must hold, compared without case:
///
///     Name=?text     name begins with the text behind one character
///     ST=ss ST=ss_cc ST:ss ST:ss_cc     state, or state and country
///     CN=cc CN:cc ID=id                 country, identifier
///     RA<lat:lon:km                     within a distance of a place
///     P Lat Lon Elev with = < >         equal to, at most, at least a number
///     WMO=nnnnn WMO< WMO>
///
/// A word may also be an identifier, a WMO number of five digits, or the beginning of a name, of
/// five characters or more. A value that is Missing fits no number.

/// Index of the first word that selects a record; -1 for none, 1 for an empty list.
int CTY_match(int count, char **list, const CityRec *record);

/// 1 if a list is empty, names `id`, or holds a selector (which the database must judge); else 0.
int CTY_is_selected(int count, char **list, const char *id);
