#pragma once

/// A workstation on a screen of its own.

#include <cmath>

#include "support/scoped_env.h"
#include "support/screen.h"
#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/replay.h"
#include "tyr/gks/session.h"
#include "tyr/paper/metafile_reader.h"
#include "tyr/x11/draw_image.h"
#include "tyr/x11/window_image.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_window.h"

inline constexpr unsigned kBlack = 0x000000;
inline constexpr unsigned kWhite = 0xFFFFFF;
inline constexpr unsigned kRed = 0xFF0000;
inline constexpr unsigned kGreen = 0x00FF00;

/// A window of the kernel of 200 by 100 pixels, with red and green as the colours 2 and 3. World
/// coordinates of transformation 1 are pixels, from the lower left.
struct X11 : ::testing::Test {
    VirtualScreen screen;
    X11()
    {
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        RES_put("geometry", "200x100");
        gset_recording(1);
        for (const char *name : {"background", "icon", "font_list"}) {
            RES_put(name, nullptr);
        }
    }
    ~X11() override { gclose_ws(1); }

    static bool open(const char *geometry = "200x100")
    {
        RES_put("geometry", geometry);
        gopen_gks(nullptr, 0);
        return gopen_ws(1, "", kDeviceDisplay) == 0;
    }
    static void start_plot()
    {
        gclear_ws(1, 1);
        GPH_set_colour(0, 0, 0, 0);
        GPH_set_colour(1, 1, 1, 1);
        GPH_set_colour(2, 1, 0, 0);
        GPH_set_colour(3, 0, 1, 0);
        int width = 0;
        int height = 0;
        ginq_ws_size(&width, &height);
        const float x = static_cast<float>(width) - 1.0F;
        const float y = static_cast<float>(height) - 1.0F;
        const float surface[4] = {0.0F, 1.0F, 0.0F, y / x};
        const float pixels[4] = {0.0F, x, 0.0F, y};
        gset_ws_window(1, surface);
        gset_viewport(1, surface);
        gset_window(1, pixels);
        gsel_norm_tran(1);
    }
    /// A bit of everything, with attributes that are left changed at the end.
    static void draw_picture()
    {
        const float area[8] = {10, 10, 60, 10, 60, 40, 10, 40};
        const float line[6] = {5, 90, 100, 50, 195, 90};
        const float marks[4] = {150, 20, 180, 30};
        const float place[2] = {20, 60};
        gset_fill_colr_ind(2);
        gfill_area(4, area);
        gset_line_colr_ind(3);
        gset_linetype(2);
        gset_linewidth(3.0F);
        gpolyline(3, line);
        gset_marker_colr_ind(2);
        gset_marker_type(4);
        gset_marker_size(1.5F);
        gpolymarker(2, marks);
        gset_text_colr_ind(3);
        gset_char_ht(12.0F);
        gtext(place, "Wind");
        gset_fill_int_style(2);
        gset_fill_style_ind(8);
        const float pattern[8] = {100, 10, 140, 10, 140, 40, 100, 40};
        gfill_area(4, pattern);
    }
};
