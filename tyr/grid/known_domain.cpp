#include "tyr/grid/known_domain.h"

namespace {

struct KnownGrid {
    int id, proj, nx, ny;
    float dx, dy, clat, clon;
};

constexpr KnownGrid kKnownGrids[] = {
    {21,  kProjLatLon,  37,  37,  5.0F,    2.5F,    45.0F,   90.0F    },
    {22,  kProjLatLon,  37,  37,  5.0F,    2.5F,    45.0F,   -90.0F   },
    {23,  kProjLatLon,  37,  37,  5.0F,    2.5F,    -45.0F,  90.0F    },
    {24,  kProjLatLon,  37,  37,  5.0F,    2.5F,    -45.0F,  -90.0F   },
    {25,  kProjLatLon,  73,  19,  5.0F,    5.0F,    45.0F,   180.0F   },
    {26,  kProjLatLon,  73,  19,  5.0F,    5.0F,    -45.0F,  180.0F   },
    {37,  kProjLatLon,  73,  73,  1.5F,    1.5F,    45.0F,   15.0F    },
    {38,  kProjLatLon,  73,  73,  1.5F,    1.5F,    45.0F,   105.0F   },
    {39,  kProjLatLon,  73,  73,  1.5F,    1.5F,    45.0F,   -165.0F  },
    {40,  kProjLatLon,  73,  73,  1.5F,    1.5F,    45.0F,   -75.0F   },
    {41,  kProjLatLon,  73,  73,  1.5F,    1.5F,    -45.0F,  15.0F    },
    {42,  kProjLatLon,  73,  73,  1.5F,    1.5F,    -45.0F,  105.0F   },
    {43,  kProjLatLon,  73,  73,  1.5F,    1.5F,    -45.0F,  -165.0F  },
    {44,  kProjLatLon,  73,  73,  1.5F,    1.5F,    -45.0F,  -75.0F   },
    {50,  kProjLatLon,  36,  33,  2.5F,    1.25F,   40.0F,   -96.25F  },
    {61,  kProjLatLon,  91,  46,  2.0F,    2.0F,    45.0F,   90.0F    },
    {62,  kProjLatLon,  91,  46,  2.0F,    2.0F,    45.0F,   -90.0F   },
    {63,  kProjLatLon,  91,  46,  2.0F,    2.0F,    -45.0F,  90.0F    },
    {64,  kProjLatLon,  91,  46,  2.0F,    2.0F,    -45.0F,  -90.0F   },
    {211, kProjLambert, 93,  65,  0.8127F, 0.8127F, 40.607F, -100.553F},
    {212, kProjLambert, 185, 129, 0.4063F, 0.4063F, 40.606F, -100.554F},
    {215, kProjLambert, 369, 257, 0.2032F, 0.2032F, 40.607F, -100.553F},
};

constexpr float kLambertMeridian = -95.0F;
constexpr float kLambertParallel = 25.0F;

} // namespace

int GRD_grid_domain(int grid_id, DomainRec *domain)
{
    for (const KnownGrid &known : kKnownGrids) {
        if (known.id != grid_id) {
            continue;
        }
        domain->proj = known.proj;
        domain->nx = known.nx;
        domain->ny = known.ny;
        domain->dx = known.dx;
        domain->dy = known.dy;
        domain->clat = known.clat;
        domain->clon = known.clon;
        if (known.proj == kProjLambert) {
            domain->plon = kLambertMeridian;
            domain->parm1 = domain->parm2 = kLambertParallel;
            domain->parm3 = 1.0F;
        }
    }
    return 1;
}
