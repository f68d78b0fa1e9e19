// resvg_batch.js WIDTH OUT FILE...: each file to OUT/NAME.png with resvg's package for node, as its
// users write it.
'use strict';

const fs = require('fs');
const path = require('path');
const { Resvg } = require('@resvg/resvg-js');

const [width, out, ...files] = process.argv.slice(2);
const options = {
  fitTo: { mode: 'width', value: Number(width) },
  font: { loadSystemFonts: false },
};
for (const file of files) {
  const picture = new Resvg(fs.readFileSync(file, 'utf8'), options).render();
  fs.writeFileSync(path.join(out, path.basename(file, '.svg') + '.png'), picture.asPng());
}
