#pragma once

/// Comfort indices. Temperatures in kelvin, wind speed v in m/s. Missing for a negative argument.

/// Wind chill equivalent temperature, after Siple and Passel (1945, Proc. Amer. Phil. Soc. 89). The
/// temperature itself for v below 2 or t above 306.15; v counts up to 26.
float MET_wind_chill(float t, float v);

/// Wind chill of the Joint Action Group for Temperature Indices (2001; Osczevski and Bluestein
/// 2005, BAMS 86), at most t.
float MET_wind_chill2(float t, float v);

/// Heat loss of the skin in W/m^2, after Siple and Passel (1945). The temperature itself for v
/// below 2 or t above 306.15; v counts up to 26.
float MET_heat_loss(float t, float v);

/// Heat index of temperature and dew point: the sixteen-term fit to Steadman (1979, J. Appl.
/// Meteor. 18) with its constant cut to 16, and Steadman's simple form where that is below 77 F.
/// Missing for td above t.
float MET_heat_index(float t, float td);

/// Humiture, degrees Fahrenheit: temperature plus vapour pressure less 21 (Lally and Watson 1960,
/// Weatherwise 13). The temperature as given if the vapour pressure is below 21 hPa.
float MET_humiture(float t, float td);

/// Discomfort index 0.55 a + 0.2 b + 17.5 of temperature and dew point in degrees Fahrenheit (Thom
/// 1959, Weatherwise 12).
float MET_discomfort(float a, float b);
