#pragma once

/// A page with a domain, and the lines that map layers draw on it.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>

#include "support/kernel_plot.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry_private.h"
#include "tyr/map/map_file_private.h"
#include "tyr/map/map_grid.h"
#include "tyr/map/map_layer.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/plot/view.h"

using namespace tyr;

inline constexpr float kViewWidth = 0.9F;
inline constexpr float kViewHeight = 0.6F;

struct LatLon {
    float lat, lon;
};
using Line = std::vector<LatLon>;

inline void put_number(std::string &bytes, uint32_t value, int count)
{
    for (int i = count - 1; i >= 0; --i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
    }
}

inline std::string binary_map(const std::vector<Line> &lines)
{
    std::string bytes;
    for (const Line &line : lines) {
        put_number(bytes, static_cast<uint32_t>(line.size()), 2);
        bytes += std::string(20, '\0');
        for (const LatLon &p : line) {
            put_number(bytes, std::bit_cast<uint32_t>(p.lat), 4);
            put_number(bytes, std::bit_cast<uint32_t>(p.lon), 4);
        }
    }
    return bytes + std::string(22, '\0');
}

inline std::string text_map(const std::vector<Line> &lines)
{
    std::string text;
    for (const Line &line : lines) {
        text += std::to_string(line.size()) + " 0 0 0 0 7\n";
        for (const LatLon &p : line) {
            text += std::to_string(p.lat) + " " + std::to_string(p.lon) + "\n";
        }
    }
    return text + "0 0 0 0 0 0\n";
}

/// A page with a domain's window in transformation 2; strokes are read back in plot units.
class MapPage {
  public:
    explicit MapPage(const char *domain) : plot_(kDevicePostScript, "color,port")
    {
        CLR_read_table("tyr.clr");
        DOM_decode(domain, &domain_);
        PLT_set_domain(&domain_);
        const float viewport[4] = {0.0F, kViewWidth, 0.0F, kViewHeight};
        gset_viewport(2, viewport);
        gset_viewport(1, viewport);
        gset_window(1, viewport);
        const float corners[4] = {0.0F, 0.0F, kViewWidth, kViewHeight};
        gsel_norm_tran(1);
        gpolyline(2, corners);
        gsel_norm_tran(2);
        DOM_get_window(window_);
    }

    /// What was drawn since, in plot units; texts keep their strokes apart.
    std::vector<PsStroke> strokes()
    {
        page_ = plot_.page();
        EXPECT_EQ(page_.error, "");
        std::vector<PsStroke> all = strokes_of(page_, -1);
        if (all.empty()) {
            ADD_FAILURE() << "no corners";
            return {};
        }
        const PsPoint a = all[0].points[0];
        const PsPoint b = all[0].points[1];
        all.erase(all.begin());
        for (PsStroke &s : all) {
            for (PsPoint &p : s.points) {
                p[0] = window_[0] + (p[0] - a[0]) / (b[0] - a[0]) * (window_[1] - window_[0]);
                p[1] = window_[2] + (p[1] - a[1]) / (b[1] - a[1]) * (window_[3] - window_[2]);
            }
        }
        return all;
    }
    const PsPage &page() const { return page_; }

  private:
    KernelPlot plot_;
    DomainRec domain_ = {};
    float window_[4] = {};
    PsPage page_;
};

class MapLayer : public testing::Test {
  protected:
    MapLayer() { MSG_set_mask(0, 0xFF); }
    ~MapLayer() override { set_map_fill(false); }

    /// The path of a file in the test's folder, and its drawing.
    std::string write(const std::string &bytes) { return folder_.write("a.map", bytes); }
    std::vector<PsStroke> draw(const char *domain, const std::string &entry)
    {
        MapPage page(domain);
        start_map_entries(kMapUnder | kMapOver | kMapUnmarked);
        testing::internal::CaptureStderr();
        result_ = MAP_process(entry.c_str());
        said_ = testing::internal::GetCapturedStderr();
        return page.strokes();
    }

    TempDir folder_;
    int result_ = 0;
    std::string said_;
};
