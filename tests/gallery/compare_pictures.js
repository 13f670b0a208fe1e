// comparePictures([svg, svg without text, png] in Base64, isLabel, hasFractions, mixedRows): {faults, glyphs}.
// mixedRows: those of pixels in which bars of the document end.
window.comparePictures = (() => {
  const load = (type, data) => new Promise((done, failed) => {
    const image = new Image();
    image.onload = () => done(image);
    image.onerror = () => failed(new Error(`a broken ${type}`));
    image.src = `data:image/${type};base64,${data}`;
  });
  const draw = (image, width, height) => {
    const canvas = document.createElement('canvas');
    canvas.width = width;
    canvas.height = height;
    const context = canvas.getContext('2d', { willReadFrequently: true });
    context.drawImage(image, 0, 0);
    return context.getImageData(0, 0, width, height).data;
  };
  const difference = (one, other, at, to = at) => {
    let most = 0;
    for (let channel = 0; channel < 4; ++channel) {
      most = Math.max(most, Math.abs(one[4 * at + channel] - other[4 * to + channel]));
    }
    return most;
  };

  // A mark for each pixel, grown by one in all directions.
  const grown = (marks, width, height) => {
    const larger = new Uint8Array(marks.length);
    for (let at = 0; at < marks.length; ++at) {
      if (!marks[at]) {
        continue;
      }
      const x = at % width;
      const y = (at - x) / width;
      for (let row = Math.max(0, y - 1); row <= Math.min(height - 1, y + 1); ++row) {
        larger.fill(1, row * width + Math.max(0, x - 1), row * width + Math.min(width - 1, x + 1) + 1);
      }
    }
    return larger;
  };

  const compareLabel = (svg, bars, png, width, height) => {
    const touched = new Uint8Array(width * height);
    for (let at = 0; at < touched.length; ++at) {
      touched[at] = difference(svg, bars, at) > 0;
    }
    const glyphs = grown(touched, width, height);
    let outside = 0;
    let most = 0;
    for (let at = 0; at < glyphs.length; ++at) {
      const differs = difference(svg, png, at);
      outside += differs > 0 && !glyphs[at];
      most = glyphs[at] ? Math.max(most, differs) : most;
    }
    return { faults: outside ? [`${outside} pixels differ`] : [], glyphs: most };
  };

  // The two colours that most pixels have.
  const colourPair = (picture) => {
    const counts = new Map();
    for (const colour of new Uint32Array(picture.buffer)) {
      counts.set(colour, (counts.get(colour) ?? 0) + 1);
    }
    return [...counts].sort((one, other) => other[1] - one[1]).map(([colour]) => colour).slice(0, 2);
  };

  // The rows of the text in either picture: in the PNG, those with pixels of neither colour of the bars.
  const textRows = (svg, bars, png, width, height) => {
    const colours = new Uint32Array(png.buffer);
    const [first, second] = colourPair(png);
    let top = height;
    let bottom = -1;
    for (let at = 0; at < width * height; ++at) {
      const isEdge = colours[at] !== first && colours[at] !== second;
      if (isEdge || difference(svg, bars, at) > 0) {
        const row = Math.floor(at / width);
        top = Math.min(top, row);
        bottom = Math.max(bottom, row);
      }
    }
    const margin = 4;  // rows of a glyph that hold no edge
    return bottom < 0 ? { top: 0, bottom: -1 } : { top: top - margin, bottom: bottom + margin };
  };

  // Where a row changes between dark and light.
  const edges = (isDark, width, row) => {
    const found = [];
    for (let x = 1; x < width; ++x) {
      if (isDark[row * width + x] !== isDark[row * width + x - 1]) {
        found.push(x);
      }
    }
    return isDark[row * width + width - 1] ? [...found, width] : found;
  };

  // The position and the width of a bar are cut to whole pixels in the PNG: its edges lie up to two pixels before.
  const maxShift = 2;
  const areAlike = (one, other) =>
      one.length === other.length && one.every((x, number) => Math.abs(x - other[number]) <= maxShift);

  // Closer to the second colour of the PNG than to the first.
  const darkness = (picture, [first, second]) => {
    const isDark = new Uint8Array(picture.length / 4);
    for (let at = 0; at < isDark.length; ++at) {
      isDark[at] = difference(picture, second, at, 0) < difference(picture, first, at, 0);
    }
    return isDark;
  };

  // Rows of modules end at whole pixels in the PNG, too: a row of the document is one of the three there.
  const unlikeRows = (svg, png, width, height, text, mixedRows) => {
    const pair = colourPair(png).map((colour) => new Uint8ClampedArray(Uint32Array.of(colour).buffer));
    const [svgDark, pngDark] = [svg, png].map((picture) => darkness(picture, pair));
    let count = 0;
    for (let row = 0; row < height; ++row) {
      if ((row >= text.top && row <= text.bottom) || mixedRows.includes(row)) {
        continue;
      }
      const wanted = edges(svgDark, width, row);
      const rows = [row - 1, row, row + 1].filter((other) => other >= 0 && other < height);
      count += !rows.some((other) => areAlike(wanted, edges(pngDark, width, other)));
    }
    return count;
  };

  const compareLibrary = (svg, bars, png, width, height, hasFractions, mixedRows) => {
    const faults = [];
    const text = textRows(svg, bars, png, width, height);
    if (text.bottom >= text.top && text.bottom - text.top > 0.65 * height) {
      faults.push(`rows of text from ${text.top} to ${text.bottom}`);
    }
    if (hasFractions) {
      const unlike = unlikeRows(svg, png, width, height, text, mixedRows);
      return { faults: unlike ? [...faults, `${unlike} rows with other bars`] : faults, glyphs: 0 };
    }
    let wrong = 0;
    for (let at = 0; at < width * height; ++at) {
      const row = Math.floor(at / width);
      wrong += (row < text.top || row > text.bottom) && difference(svg, png, at) > 0;
    }
    return { faults: wrong ? [...faults, `${wrong} pixels differ`] : faults, glyphs: 0 };
  };

  return async ([svgData, barsData, pngData], isLabel, hasFractions, mixedRows) => {
    const [svgImage, barsImage, pngImage] =
        await Promise.all([load('svg+xml', svgData), load('svg+xml', barsData), load('png', pngData)]);
    // Data Matrix without a margin is as large as the symbol in SVG, and as the box in PNG.
    const width = Math.min(svgImage.naturalWidth, pngImage.naturalWidth);
    const height = Math.min(svgImage.naturalHeight, pngImage.naturalHeight);
    const [svg, bars, png] = [svgImage, barsImage, pngImage].map((image) => draw(image, width, height));
    const result = isLabel ? compareLabel(svg, bars, png, width, height)
                           : compareLibrary(svg, bars, png, width, height, hasFractions, mixedRows);
    if (isLabel && (svgImage.naturalWidth !== pngImage.naturalWidth || svgImage.naturalHeight !== pngImage.naturalHeight)) {
      result.faults.push(`${svgImage.naturalWidth} x ${svgImage.naturalHeight} units`);
    }
    return result;
  };
})();
undefined;
