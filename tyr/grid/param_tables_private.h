#pragma once

#include "tyr/base/missing.h"

// Numbers and units of the coded variable tables.

namespace tyr {

struct ParamRow {
    int number, var;
    const char *units;
    int ltype = kMissingInt; ///< that the number stands for; Missing: the record's
    int level = 0;
};

/// Table 128 of centre 98, numbers from 129 on, with the system's numbers of the same quantities.
/// Source: the centre's table as ecCodes 2.28 has it (grib1/2.98.128.table). Cloud cover of 164 is
/// labelled in per cent as the old tables do, though the table counts it from 0 to 1.
inline constexpr ParamRow kCentreParams[] = {
    {129,         6,   "m^2/s^2"    },
    {130,         11,  "K"          },
    {131,         33,  "m/s"        },
    {132,         34,  "m/s"        },
    {133,         51,  "kg/kg"      },
    {134,         1,   "Pa"         },
    {135,         39,  "Pa/s"       },
    {137,         54,  "kg/m^2"     },
    {138,         43,  "1/s"        },
    {139,         11,  "K"          },
    {140,         86,  "m"          },
    {141,         65,  "m"          },
    {142,         62,  "m"          },
    {143,         63,  "m"          },
    {146,         122, "J/m^2"      },
    {147,         121, "J/m^2"      },
    {151,         1,   "Pa",          102},
    {155,           44,            "1/s"            },
    {156,           7,            "m" },
    {157,           52,            "%"           },
    {159,           67,            "m" },
    {164,           71,            "%",            200},
    {165,        33,           "m/s",           105, 10},
    {166,      34,"m/s",105, 10},
    {167,         11,     "K",                  105, 2},
    {168,         17,            "K",                       105, 2},
    {169,        117,    "J/m^2"},
    {170,         85,  "K"},
    {171,          86,             "m"                       },
    {172,    81,    "fraction"                },
    {173,        83,          "m"                    },
    {174,        84,"fraction"},
    {175, 115, "J/m^2"},
    {176,        111,  "J/m^2"},
    {177, 112,      "J/m^2"                              },
    {178,    113,       "J/m^2"                      },
    {179,    114,      "J/m^2"                        },
    {180,    124,  "N*s/m^2"},
    {181,    125, "N*s/m^2"},
    {182,    57,  "m"},
    {183,  85,    "K"                                },
    {186,  73,     "fraction"                          },
    {187,        74,          "fraction"                                },
    {188,        75,        "fraction"},
    {201, 15,"K",105, 2},
    {202, 16,"K",105, 2},
    {205, 90,"m"                     },
    {206,        10,         "kg/m^2"                                    },
    {228,         61,          "m"                         },
    {235,          11,             "K",                        1},
    {236,        85,               "K"    },
};

/// The old grid code; numbers above 100 are those of model files with units of their own.
inline constexpr ParamRow kOldParams[] = {
    {1,   1,   "hPa"   },
    {2,   7,   "10 m"  },
    {3,   8,   "10 m"  },
    {4,   11,  "C"     },
    {5,   15,  "C"     },
    {6,   16,  "C"     },
    {8,   13,  "C"     },
    {10,  17,  "C"     },
    {13,  52,  "%"     },
    {15,  24,  "C"     },
    {21,  32,  "m/s"   },
    {23,  33,  "m/s"   },
    {24,  34,  "m/s"   },
    {40,  38,  "mb/s"  },
    {44,  136, "m/s/km"},
    {50,  61,  "m"     },
    {51,  66,  "m"     },
    {61,  80,  "0.5 C" },
    {62,  80,  "C"     },
    {64,  100, "0.5 m" },
    {75,  101, "10 deg"},
    {76,  103, "s"     },
    {101, 1,   "Pa"    },
    {102, 7,   "m"     },
    {104, 11,  "K"     },
    {140, 39,  "Pa/s"  },
    {161, 80,  "K"     },
    {164, 100, "m"     },
    {175, 101, "deg"   },
};

/// Units of edition 1's table 2, in the order of its numbers. Source: WMO-No. 306, Volume I.2, code
/// table 2 of FM 92-IX (in ecCodes 2.28: grib1/2.0.2.table, whose units of 19, 53 and 76 are
/// slips); 136 to 192 are local numbers of centre 7.
struct UnitRow {
    int first, last; ///< numbers
    const char *units;
};
inline constexpr UnitRow kParamUnits[] = {
    {1,   2,   "Pa"        },
    {3,   3,   "Pa/s"      },
    {4,   4,   "K*m^2/kg/s"},
    {5,   5,   "m"         },
    {6,   6,   "m^2/s^2"   },
    {7,   9,   "m"         },
    {10,  10,  "Dobson"    },
    {11,  18,  "K"         },
    {19,  19,  "K/m"       },
    {20,  20,  "m"         },
    {24,  25,  "K"         },
    {26,  26,  "Pa"        },
    {27,  27,  "m"         },
    {31,  31,  "deg"       },
    {32,  34,  "m/s"       },
    {35,  36,  "m^2/s"     },
    {37,  37,  "m^2/s^2"   },
    {38,  38,  "1/s"       },
    {39,  39,  "Pa/s"      },
    {40,  40,  "m/s"       },
    {41,  46,  "1/s"       },
    {47,  47,  "deg"       },
    {48,  50,  "m/s"       },
    {51,  51,  "kg/kg"     },
    {52,  52,  "%"         },
    {53,  53,  "kg/kg"     },
    {54,  54,  "kg/m^2"    },
    {55,  56,  "Pa"        },
    {57,  58,  "kg/m^2"    },
    {59,  59,  "kg/m^2/s"  },
    {60,  60,  "%"         },
    {61,  63,  "kg/m^2"    },
    {64,  64,  "kg/m^2/s"  },
    {65,  65,  "kg/m^2"    },
    {66,  70,  "m"         },
    {71,  75,  "%"         },
    {76,  76,  "kg/m^2"    },
    {77,  77,  "K"         },
    {78,  79,  "kg/m^2"    },
    {80,  80,  "K"         },
    {81,  81,  "fraction"  },
    {82,  83,  "m"         },
    {84,  84,  "%"         },
    {85,  85,  "K"         },
    {86,  86,  "kg/m^2"    },
    {87,  87,  "%"         },
    {88,  88,  "kg/kg"     },
    {89,  89,  "kg/m^3"    },
    {90,  90,  "kg/m^2"    },
    {91,  91,  "fraction"  },
    {92,  92,  "m"         },
    {93,  93,  "deg"       },
    {94,  96,  "m/s"       },
    {97,  97,  "m/s"       },
    {98,  98,  "1/s"       },
    {99,  99,  "kg/m^2"    },
    {100, 100, "m"         },
    {101, 101, "deg"       },
    {102, 102, "m"         },
    {103, 103, "s"         },
    {104, 104, "deg"       },
    {105, 105, "m"         },
    {106, 106, "s"         },
    {107, 107, "deg"       },
    {108, 108, "s"         },
    {109, 109, "deg"       },
    {110, 110, "s"         },
    {111, 117, "W/m^2"     },
    {121, 123, "W/m^2"     },
    {124, 125, "N/m^2"     },
    {126, 126, "J"         },
    {136, 136, "1/s"       },
    {156, 157, "J/kg"      },
    {180, 180, "m/s"       },
    {190, 190, "m^2/s^2"   },
    {191, 192, "%"         },
};

/// Variable codes of model files, as GRD_unit_text tells their units.
struct CodeUnits {
    int code;
    const char *units;
};
inline constexpr CodeUnits kCodeUnits[] = {
    {1,   "hectopascals"           },
    {101, "pascals"                },
    {2,   "geopotential dekameters"},
    {102, "geopotential meters"    },
    {4,   "celsius"                },
    {15,  "celsius"                },
    {104, "kelvin"                 },
    {13,  "percent"                },
    {23,  "meters/second"          },
    {24,  "meters/second"          },
    {40,  "millibars/second"       },
    {140, "pascals/second"         },
    {50,  "kg/m2"                  },
    {61,  "0.5 degC"               },
    {62,  "degC"                   },
    {161, "degK"                   },
    {64,  "0.5 meters"             },
    {164, "meters"                 },
    {75,  "10 degrees"             },
    {175, "degrees"                },
    {76,  "seconds"                },
};

} // namespace tyr
