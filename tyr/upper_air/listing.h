#pragma once

#include "tyr/upper_air/report.h"

// A report as text for the user, at a message mask (base/msg.h).

/// Date of the current file, station, and what is known of number, place and elevation.
void UPA_print_station(unsigned mask, const UpaReport *report);

/// The three tables: mandatory levels with a pressure, significant levels and winds in two columns.
void UPA_print_report(unsigned mask, const UpaReport *report);

/// One of the tables behind a line of the station.
void UPA_print_mand(unsigned mask, const UpaReport *report);
void UPA_print_sig(unsigned mask, const UpaReport *report);
void UPA_print_wind(unsigned mask, const UpaReport *report);
