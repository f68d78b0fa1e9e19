// Checks the atlas SHEET.json, one frame a drawing: every drawing of FOLDER has its frame, no frame
// is empty, and no pixel shows outside the frames. check.mjs FOLDER SHEET.json; prints the numbers
// of drawings, frames and sheets and how much of the sheets is frames.
import assert from 'node:assert/strict';
import {readdirSync, readFileSync} from 'node:fs';
import {dirname, join} from 'node:path';
import {PNG} from 'pngjs';

const [folder, first] = process.argv.slice(2);
const drawings = readdirSync(folder, {recursive: true}).filter(name => name.endsWith('.svg'));
const read = name => JSON.parse(readFileSync(join(dirname(first), name)));
const description = JSON.parse(readFileSync(first));
const sheets = [description, ...(description.meta.related_multi_packs ?? []).map(read)];

let frameArea = 0;
let sheetArea = 0;
const names = new Set();
for (const {frames, meta} of sheets) {
  const {width, height, data} = PNG.sync.read(readFileSync(join(dirname(first), meta.image)));
  sheetArea += width * height;
  for (const [name, {frame: {x, y, w, h}}] of Object.entries(frames)) {
    names.add(name);
    frameArea += w * h;
    let shown = 0;
    for (let row = y; row < y + h; ++row) {
      for (let at = (row * width + x) * 4 + 3, end = at + w * 4; at < end; at += 4) {
        shown |= data[at];
        data[at] = 0;
      }
    }
    assert.ok(shown, `${name} is empty`);
  }
  for (let at = 3; at < data.length; at += 4) assert.equal(data[at], 0, 'a pixel outside frames');
}
const missing = drawings.filter(name => !names.has(name));
console.log([drawings.length, names.size, sheets.length,
             (100 * frameArea / sheetArea).toFixed(1), missing.join(' ')].join('\t'));
