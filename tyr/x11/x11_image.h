#pragma once

struct ImageRec;

/// Grabs the draw target of a window as an image: size, layout, pixels and colours. The caller
/// frees it by IMG_free. @return 1; 0 with a message, or in silence where there is no window
int gget_image(ImageRec *image);
