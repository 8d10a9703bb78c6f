// Any bytes as one section of a GRIB product: the first byte says which.

#include <vector>

#include "fuzz/input.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/geometry_private.h"
#include "tyr/grib/grib_index_private.h"

namespace {

constexpr int kColumns = 7;
constexpr int kRows = 5;

/// A product with a small grid, for the sections that want one before them.
tyr::Product make_product(bool has_map)
{
    tyr::Product product;
    product.origin.file = "input";
    product.edition = 1;
    product.has_map = has_map;
    product.bitmap.assign(kColumns * kRows / 8 + 1, 0xA5);
    product.layout.nx = kColumns;
    product.layout.ny = kRows;
    product.packing.points = kColumns * kRows;
    return product;
}

void read_section(unsigned which, const tyr::Section &section, tyr::Product *product, GridRec *grid)
{
    switch (which % 10) {
    case 0:
        tyr::read_definition1(section, product, grid);
        tyr::make_info(product->ensemble, grid);
        break;
    case 1:
        tyr::read_grid1(section, product, grid);
        break;
    case 2:
        tyr::read_bitmap1(section, product);
        break;
    case 3:
        tyr::read_data1(section, product, grid);
        break;
    case 4:
        tyr::read_ident2(section, product, grid);
        break;
    case 5:
        tyr::read_grid2(section, product, grid);
        break;
    case 6:
        tyr::read_product2(section, product, grid);
        tyr::make_info(product->ensemble, grid);
        break;
    case 7:
        tyr::read_packing2(section, product);
        break;
    case 8:
        tyr::read_bitmap2(section, product);
        break;
    default: { // a packing description of 60 octets, and the data behind it
        constexpr size_t kDescription = 60;
        const size_t cut = std::min(kDescription, section.size());
        if (tyr::read_packing2(tyr::Section(section.bytes().first(cut)), product)) {
            tyr::read_data2(tyr::Section(section.bytes().subspan(cut)), product, grid);
        }
        break;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    if (size < 2) {
        return 0;
    }
    tyr::parse_index_line(fuzz_text(data + 1, size - 1));
    std::vector<uint8_t> bytes(data + 1, data + size);
    bytes.resize(bytes.size() + tyr::kBitPadding);
    GridRec grid;
    GRD_init(&grid);
    tyr::Product product = make_product(data[0] >= 128);
    read_section(data[0], tyr::Section(tyr::Octets(bytes).first(size - 1)), &product, &grid);
    GRD_free(&grid);
    return 0;
}
