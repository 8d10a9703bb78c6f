#pragma once

#include "tyr/image/tyrimg.h"

namespace tyr {

/// The same for a file that is looked at so many times.
int tyr_read(const char *path, ImageRec *image, int header_only, int most_tries);

/// Spreads a domain over a picture of that size: nx, ny become the size, dx, dy shrink with it.
void image_fit_domain(DomainRec *domain, int width, int height);

} // namespace tyr
