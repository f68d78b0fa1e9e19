// Atlases of `quor pack` read by what reads them in games: each frame, cut out by the reader's own
// rectangle and put back where it was trimmed, has the pixels of the drawing rendered alone.
// QUOR is the path of the tool.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';
import {after, before, test} from 'node:test';

import {TextureAtlas} from '@esotericsoftware/spine-core';
import {spritesheetAsset, Texture, TextureSource} from 'pixi.js';
import {PNG} from 'pngjs';

const require = createRequire(import.meta.url);
const PhaserTexture = require('phaser/src/textures/Texture.js');
const phaserParsers = {
  hash: require('phaser/src/textures/parsers/JSONHash.js'),
  array: require('phaser/src/textures/parsers/JSONArray.js'),
};

const kNames = [
  'arrow.svg', 'ui/arrow.svg', 'a:b.svg', '"quoted" \'name\'.svg', 'many.dots.in.svg',
  'with some spaces.svg', '家.svg', '犬.svg', 'ñandú/Ωmega.svg', 'a-b.svg', 'a_b.svg', '1.svg',
];
let folder;

/** A drawing like no other one, with soft edges and a free margin that differs on each side. */
function drawing(index) {
  const hue = Math.round(index * 255 / kNames.length).toString(16).padStart(2, '0');
  return `<svg xmlns="http://www.w3.org/2000/svg" width="${30 + index}" height="${24 + 2 * index}">
    <path d="M${3 + index % 3} 4.3 L${20 + index} 9 L9 ${20 + index} Z" fill="#${hue}40c0"/>
    <circle cx="12" cy="13.5" r="5" fill="#ff${hue}00" fill-opacity=".6"/></svg>`;
}

function quor(...args) {
  execFileSync(process.env.QUOR, args, {cwd: folder, stdio: ['ignore', 'pipe', 'pipe']});
}

const pictures = new Map();
/** A picture of the folder: {width, height, data}. */
function picture(name) {
  if (!pictures.has(name)) pictures.set(name, PNG.sync.read(readFileSync(join(folder, name))));
  return pictures.get(name);
}

/** The drawing rendered alone. */
function alone(name, scale) {
  const out = `alone-${scale}-${kNames.indexOf(name)}.png`;
  if (!pictures.has(out)) quor('render', `icons/${name}`, '-o', out, '--scale', `${scale}`);
  return picture(out);
}

/** `cut` is {image, x, y, w, h} in its sheet, {left, top} in the whole drawing of {width, height}. */
function assertShows(cut, name, scale) {
  const expected = alone(name, scale);
  assert.deepEqual([cut.width, cut.height], [expected.width, expected.height], name);
  const sheet = picture(cut.image);
  const whole = Buffer.alloc(expected.data.length);
  for (let y = 0; y < cut.h; ++y) {
    const from = ((cut.y + y) * sheet.width + cut.x) * 4;
    sheet.data.copy(whole, ((cut.top + y) * cut.width + cut.left) * 4, from, from + cut.w * 4);
  }
  assert.ok(whole.equals(expected.data), `${name} at ${scale}`);
}

before(() => {
  folder = mkdtempSync(join(tmpdir(), 'quor-readers-'));
  kNames.forEach((name, index) => {
    const path = join(folder, 'icons', name);
    mkdirSync(dirname(path), {recursive: true});
    writeFileSync(path, drawing(index));
  });
});
after(() => rmSync(folder, {recursive: true}));

function pack(...args) {
  pictures.clear();
  quor('pack', 'icons', ...args);
}

/** A loader that does with our files what the one of PixiJS does with what it fetches. */
const pixiLoader = {
  async load(what) {
    if (Array.isArray(what)) {
      return Object.fromEntries(what.map(path => {
        const {width, height} = picture(path.slice(1));
        const source = new TextureSource({width, height, label: path.slice(1)});
        return [path, new Texture({source})];
      }));
    }
    const json = JSON.parse(readFileSync(join(folder, what.src.slice(1)), 'utf8'));
    assert.ok(await spritesheetAsset.loader.testParse(json, what));
    return spritesheetAsset.loader.parse(json, what, pixiLoader);
  },
};

async function checkPixi(file, scale, sheetCount) {
  const first = await pixiLoader.load({src: `/${file}`, data: {}});
  const sheets = [first, ...(first.linkedSheets ?? [])];
  assert.equal(sheets.length, sheetCount);
  const names = [];
  for (const sheet of sheets) {
    for (const [name, texture] of Object.entries(sheet.textures)) {
      names.push(name);
      const {frame, orig, trim} = texture;
      const pixels = value => Math.round(value * texture.source.resolution);
      assert.equal(texture.source.resolution, scale);
      assert.deepEqual([texture.defaultAnchor.x, texture.defaultAnchor.y], [0.5, 0.5]);
      assertShows({image: texture.source.label, x: pixels(frame.x), y: pixels(frame.y),
                   w: pixels(frame.width), h: pixels(frame.height), left: pixels(trim?.x ?? 0),
                   top: pixels(trim?.y ?? 0), width: pixels(orig.width),
                   height: pixels(orig.height)}, name, scale);
    }
  }
  assert.deepEqual(names.sort(), [...kNames].sort());
}

test('PixiJS: one sheet', async () => {
  pack('-o', 'one');
  await checkPixi('one.json', 1, 1);
});

test('PixiJS: several sheets', async () => {
  pack('-o', 'many', '--max-size', '64', '--extrude', '1', '--border', '2');
  const count = JSON.parse(readFileSync(join(folder, 'many.json'))).meta.related_multi_packs.length;
  assert.ok(count > 1);
  await checkPixi('many.json', 1, count + 1);
});

test('PixiJS: @1x and @2x, untrimmed too', async () => {
  for (const trim of [[], ['--no-trim']]) {
    pack('-o', 'scaled', '--scale', '1', '--scale', '2', ...trim);
    await checkPixi('scaled@1x.json', 1, 1);
    await checkPixi('scaled@2x.json', 2, 1);
  }
});

/** A texture of Phaser without a renderer. */
function phaserTexture(images) {
  const texture = Object.create(PhaserTexture.prototype);
  const source = images.map(image => ({image, ...picture(image), resolution: 1}));
  return Object.assign(texture, {source, frames: {}, customData: {}, frameTotal: 0,
                                 firstFrame: '__BASE', key: 'atlas'});
}

function checkPhaser(texture) {
  const names = texture.getFrameNames();
  assert.deepEqual([...names].sort(), [...kNames].sort());
  for (const name of names) {
    const frame = texture.frames[name];
    assertShows({image: frame.source.image, x: frame.cutX, y: frame.cutY, w: frame.cutWidth,
                 h: frame.cutHeight, left: frame.x, top: frame.y, width: frame.realWidth,
                 height: frame.realHeight}, name, 1);
  }
}

const readJson = name => JSON.parse(readFileSync(join(folder, name)));

test('Phaser: JSON hash', () => {
  pack('-o', 'hash');
  const json = readJson('hash.json');
  checkPhaser(phaserParsers.hash(phaserTexture([json.meta.image]), 0, json));
});

test('Phaser: JSON array', () => {
  pack('-o', 'array', '--format', 'json-array');
  const json = readJson('array.json');
  checkPhaser(phaserParsers.array(phaserTexture([json.meta.image]), 0, json));
});

test('Phaser: a multi-atlas', () => {
  pack('-o', 'multi', '--format', 'json-array', '--max-size', '64');
  const {textures} = readJson('multi.json');
  assert.ok(textures.length > 1);
  const texture = phaserTexture(textures.map(each => each.image));
  textures.forEach((each, index) => phaserParsers.array(texture, index, each));
  checkPhaser(texture);
});

test('the reader of .atlas files', () => {
  pack('-o', 'regions', '--format', 'atlas', '--max-size', '64');
  const atlas = new TextureAtlas(readFileSync(join(folder, 'regions.atlas'), 'utf8'));
  assert.ok(atlas.pages.length > 1);
  assert.equal(atlas.regions.length, kNames.length);
  for (const name of kNames) {
    // A ':' has no place in such files, and a_b.svg is there already.
    const region = atlas.findRegion(name === 'a:b.svg' ? 'a_b.svg-2' : name);
    assert.ok(region, name);
    assert.equal(region.page.width, picture(region.page.name).width);
    assertShows({image: region.page.name, x: region.x, y: region.y, w: region.width,
                 h: region.height, left: region.offsetX,
                 top: region.originalHeight - region.height - region.offsetY,
                 width: region.originalWidth, height: region.originalHeight}, name, 1);
  }
});
