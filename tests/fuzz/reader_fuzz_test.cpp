// Replays the corpora of every reader of files and texts from outside, and thousands of damages of
// each seed; under the sanitizers nothing may show.

#include <string>

#include <gtest/gtest.h>

#include "fuzz/replay.h"

// Each target has the one name that the fuzzer calls; here they need names of their own.
#define LLVMFuzzerTestOneInput attribute_target
#include "fuzz/attribute_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput bufr_target
#include "fuzz/bufr_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput catalogue_target
#include "fuzz/catalogue_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput colour_target
#include "fuzz/colour_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput current_target
#include "fuzz/current_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput date_target
#include "fuzz/date_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput fill_target
#include "fuzz/fill_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput font_target
#include "fuzz/font_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput format_target
#include "fuzz/format_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput metafile_target
#include "fuzz/metafile_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput name_target
#include "fuzz/name_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput netcdf_target
#include "fuzz/netcdf_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput option_target
#include "fuzz/option_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput param_target
#include "fuzz/param_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput resource_target
#include "fuzz/resource_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput symbol_target
#include "fuzz/symbol_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput city_target
#include "fuzz/city_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput domain_target
#include "fuzz/domain_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput entry_target
#include "fuzz/entry_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput map_target
#include "fuzz/map_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput region_target
#include "fuzz/region_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput raw_target
#include "fuzz/raw_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput gif_target
#include "fuzz/gif_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput png_target
#include "fuzz/png_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput tyrimg_target
#include "fuzz/tyrimg_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput xwd_target
#include "fuzz/xwd_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

/// Damages of each seed: fewer where a run takes longer.
void replay(FuzzTarget target, const std::string &name, int damages)
{
    EXPECT_GT(fuzz_replay(target, name, damages), damages);
}

} // namespace

TEST(ReaderFuzz, AttributeTexts)
{
    replay(attribute_target, "attribute", 1000);
}

TEST(ReaderFuzz, BufrStreams)
{
    replay(bufr_target, "bufr", 600);
}

TEST(ReaderFuzz, VariableAndUnitFiles)
{
    replay(catalogue_target, "catalogue", 60);
}

TEST(ReaderFuzz, ColourTables)
{
    replay(colour_target, "colour", 400);
}

TEST(ReaderFuzz, CurrentFileWords)
{
    replay(current_target, "current", 400);
}

TEST(ReaderFuzz, DatesZonesAndLabels)
{
    replay(date_target, "date", 1000);
}

TEST(ReaderFuzz, FillWordsAndFiles)
{
    replay(fill_target, "fill", 1000);
}

TEST(ReaderFuzz, Fonts)
{
    replay(font_target, "font", 150);
}

TEST(ReaderFuzz, Formats)
{
    replay(format_target, "format", 1000);
}

TEST(ReaderFuzz, Metafiles)
{
    replay(metafile_target, "metafile", 1000);
}

TEST(ReaderFuzz, NameConventions)
{
    replay(name_target, "name", 1000);
}

TEST(ReaderFuzz, NetcdfFiles)
{
    replay(netcdf_target, "netcdf", 300);
}

TEST(ReaderFuzz, CommandLines)
{
    replay(option_target, "option", 1000);
}

TEST(ReaderFuzz, PlotParams)
{
    replay(param_target, "param", 1000);
}

TEST(ReaderFuzz, ResourceFiles)
{
    replay(resource_target, "resource", 1000);
}

TEST(ReaderFuzz, SymbolFiles)
{
    replay(symbol_target, "symbol", 1000);
}

TEST(ReaderFuzz, CityDatabases)
{
    replay(city_target, "city", 300);
}

TEST(ReaderFuzz, DomainTexts)
{
    replay(domain_target, "domain", 1000);
}

TEST(ReaderFuzz, MapEntries)
{
    replay(entry_target, "entry", 300);
}

TEST(ReaderFuzz, MapFiles)
{
    replay(map_target, "map", 300);
}

TEST(ReaderFuzz, RegionFiles)
{
    replay(region_target, "region", 300);
}

TEST(ReaderFuzz, RawFiles)
{
    replay(raw_target, "raw", 600);
}

TEST(ReaderFuzz, Gifs)
{
    replay(gif_target, "gif", 600);
}

TEST(ReaderFuzz, Pngs)
{
    replay(png_target, "png", 300);
}

TEST(ReaderFuzz, Tyrimgs)
{
    replay(tyrimg_target, "tyrimg", 300);
}

TEST(ReaderFuzz, XwdFiles)
{
    replay(xwd_target, "xwd", 600);
}
