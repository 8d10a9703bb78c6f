#pragma once

#include "tyr/var/variable.h"

/// Type that a variable gets when neither the text nor the plot type tells one; kTypeValue at
/// start.
void VAR_set_default_type(int type);

/// Settles the name, the type and the catalogue numbers of a record.
///
/// The name up to the first '-' is looked up in the catalogue; a leading number is a catalogue
/// number; the forms ensmean[]name, ensdev[]name, ensprob[<value]name (or '>', '^') and
/// ens[+n]name (or '-', or none) code a member or a measure of an ensemble into the number.
///
/// @param name    up to 19 characters count as the record's name
/// @param record  its role and type are read, its name, type and numbers written
/// @return the record's var_number; 1 for a constant (a name that begins with '#'), 0 for no name
int VAR_name(const char *name, VarRec *record);

/// A number packed into an exponent code and two digits: code * 100 + digits, negated for a
/// negative x, 0 for 0. The code is the power of ten plus 5 below 10^5 times 10, cut to 0..99.
int VAR_pack_value(float x);
