// resvg, through its package for node: the conversation that driver.h describes, and
//
//     fit SIDE FILE      answers "ok WIDTH HEIGHT": the picture whose longer side is SIDE
//
// The package makes a new pixmap for each picture, where the other renderers clear one that they
// keep: the allocator has the memory ready, so that this is clearing too. Garbage is collected
// before the clock starts; the copy that the property `pixels` makes is not measured.
'use strict';

const fs = require('fs');
const readline = require('readline');
const { Resvg } = require('@resvg/resvg-js');

const font = { loadSystemFonts: false };

function optionsFor(fitTo) {
  return { fitTo, font, dpi: 96, logLevel: 'off' };
}

function loadAndDraw(text, fitTo) {
  return new Resvg(text, optionsFor(fitTo)).render();
}

function processorSeconds() {
  const { user, system } = process.cpuUsage();
  return (user + system) * 1e-6;
}

function fit(side, text) {
  const natural = new Resvg(text, optionsFor({ mode: 'original' }));
  const mode = natural.width >= natural.height ? 'width' : 'height';
  const image = loadAndDraw(text, { mode, value: side });
  return `ok ${image.width} ${image.height}`;
}

/** The rule that gives this picture: a side is told, the other follows from the aspect. */
function ruleFor(width, height) {
  return width >= height ? { mode: 'width', value: width } : { mode: 'height', value: height };
}

function timeDrawing(width, height, wanted, text) {
  const rule = ruleFor(width, height);
  const image = loadAndDraw(text, rule);
  if (image.width !== width || image.height !== height) return 'failed: another size';
  global.gc();
  const start = processorSeconds();
  let spent = 0;
  let calls = 0;
  for (; calls < 2 || spent < wanted; ++calls) {
    loadAndDraw(text, rule);
    spent = processorSeconds() - start;
  }
  return `ok ${spent / calls}`;
}

/** Bytes R G B A to B G R A, the order of 0xAARRGGBB words in memory. */
function storePixels(width, height, out, text) {
  const bytes = loadAndDraw(text, ruleFor(width, height)).pixels;
  for (let i = 0; i < bytes.length; i += 4) [bytes[i], bytes[i + 2]] = [bytes[i + 2], bytes[i]];
  fs.writeFileSync(out, bytes);
  return 'ok';
}

function answer(line) {
  const words = line.split(' ');
  const rest = (n) => fs.readFileSync(words.slice(n).join(' '), 'utf8');
  switch (words[0]) {
    case 'fit': return fit(Number(words[1]), rest(2));
    case 'time': return timeDrawing(Number(words[1]), Number(words[2]), Number(words[3]), rest(4));
    case 'pixels': return storePixels(Number(words[1]), Number(words[2]), words[3], rest(4));
    default: return 'unknown command';
  }
}

readline.createInterface({ input: process.stdin }).on('line', (line) => {
  let text;
  try {
    text = answer(line);
  } catch (error) {
    text = `failed: ${String(error).split('\n')[0]}`;
  }
  process.stdout.write(text + '\n');
});
