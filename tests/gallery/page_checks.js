// Runs in the gallery's page. Each check returns what is wrong, in words.
window.gallery = (() => {
  const all = (selector, within = document) => [...within.querySelectorAll(selector)];
  const frame = () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)));
  const nameOf = (image) => image.getAttribute('src');

  // Pictures are loaded when they are scrolled to; here all at once.
  const showAll = async () => {
    for (const image of all('img')) {
      image.loading = 'eager';
    }
    await Promise.all(all('img').map((image) => image.decode().catch(() => {})));
    await frame();
  };

  const pictureFaults = (image) => {
    const faults = [];
    const box = image.getBoundingClientRect();
    const given = [Number(image.getAttribute('width')), Number(image.getAttribute('height'))];
    if (!image.complete || image.naturalWidth === 0) {
      faults.push('is broken');
    }
    if (box.width > given[0] + 0.1 || box.width < 1) {
      faults.push(`is ${box.width} pixels wide and not ${given[0]}`);
    }
    const height = given[1] * box.width / given[0];
    if (Math.abs(box.height - height) > 1) {
      faults.push(`is ${box.height} pixels high and not ${height}`);
    }
    for (let frame = image.parentElement; frame; frame = frame.parentElement) {
      const around = frame.getBoundingClientRect();
      const isCut = box.left < around.left - 0.1 || box.right > around.right + 0.1 || box.top < around.top - 0.1 ||
          box.bottom > around.bottom + 0.1;
      const hasBox = getComputedStyle(frame).display !== 'contents';
      if (isCut && hasBox && frame !== document.documentElement) {
        faults.push(`is cut by ${frame.className || frame.tagName}`);
      }
    }
    if (box.left < 0 || box.right > innerWidth) {
      faults.push('reaches beyond the window');
    }
    return faults.map((fault) => `${nameOf(image)} ${fault}`);
  };

  const layout = () => {
    const faults = all('img').flatMap(pictureFaults);
    if (all('img').length < 100) {
      faults.push(`only ${all('img').length} pictures`);
    }
    for (const root of [document.documentElement, document.body]) {
      if (root.scrollWidth > root.clientWidth) {
        faults.push(`scrolls sideways: ${root.scrollWidth} in ${root.clientWidth}`);
      }
    }
    for (const text of all('h1, h2, h3, h4, p, figcaption, .remarks, .tabs, .code, summary')) {
      if (text.scrollWidth > text.clientWidth + 1 && text.clientWidth > 0) {
        faults.push(`text is cut: ${text.textContent.trim().slice(0, 60)}`);
      }
    }
    for (const code of all('.code')) {
      const copy = code.querySelector('.copy').getBoundingClientRect();
      for (const label of all('label', code)) {
        const box = label.getBoundingClientRect();
        if (box.right > copy.left && box.bottom > copy.top + 1 && box.top < copy.bottom - 1) {
          faults.push('tabs and the copy button overlap');
        }
      }
    }
    return faults;
  };

  const besideSection = (bar, link, section) => {
    const faults = [];
    const box = bar.getBoundingClientRect();
    if (Math.abs(box.top) > 0.5 || box.bottom > innerHeight + 0.5) {
      faults.push(`the index is at ${box.top} to ${box.bottom} beside ${link.hash}`);
    }
    const title = section.querySelector('h2').getBoundingClientRect();
    const isColumn = box.right < title.left;
    if (title.top < (isColumn ? 0 : box.bottom) || title.bottom > innerHeight) {
      faults.push(`the title of ${link.hash} is hidden`);
    }
    const marked = all('.index [aria-current]');
    if (marked.length !== 1 || marked[0] !== link) {
      faults.push(`beside ${link.hash}, ${marked.map((other) => other.hash)} is marked`);
    }
    const place = link.getBoundingClientRect();
    if (place.left < 0 || place.right > innerWidth || place.top < 0 || place.bottom > innerHeight) {
      faults.push(`the marked entry ${link.hash} is out of sight`);
    }
    return faults;
  };

  // The strip or the column stays, its entries lead to their sections, and the one that is read is marked.
  const index = async () => {
    const faults = [];
    const bar = document.querySelector('.index');
    const links = all('.index a');
    if (links.length !== all('section').length || links.length < 19) {
      faults.push(`${links.length} entries in the index`);
    }
    for (const link of links) {
      const section = document.getElementById(link.hash.slice(1));
      if (!section) {
        faults.push(`${link.hash} leads nowhere`);
        continue;
      }
      section.scrollIntoView();
      // The page follows with the next frames; how many that takes is the browser's affair.
      let found = [];
      for (let frames = 0; frames === 0 || (found.length > 0 && frames < 30); ++frames) {
        await frame();
        found = besideSection(bar, link, section);
      }
      faults.push(...found);
    }
    scrollTo(0, 0);
    await frame();
    return faults;
  };

  const rgba = (text) => (text.match(/[\d.]+/g) ?? []).map(Number);
  const luminance = ([red, green, blue]) => {
    const linear = [red, green, blue].map((value) => value / 255).map(
        (value) => value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4);
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2];
  };
  const backgroundOf = (element) => {
    for (let at = element; at; at = at.parentElement) {
      const colour = rgba(getComputedStyle(at).backgroundColor);
      if (colour.length < 4 || colour[3] === 1) {
        return colour;
      }
    }
    return [255, 255, 255];
  };
  const contrast = (one, other) => {
    const [low, high] = [luminance(one), luminance(other)].sort((a, b) => a - b);
    return (high + 0.05) / (low + 0.05);
  };

  // Text can be read, and pictures lie on light ground, so that they scan.
  const colours = () => {
    const faults = [];
    for (const element of all('body *')) {
      const hasText = [...element.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.trim());
      if (!hasText || element.offsetWidth === 0) {
        continue;
      }
      const ratio = contrast(rgba(getComputedStyle(element).color), backgroundOf(element));
      if (ratio < 4.5) {
        faults.push(`contrast ${ratio.toFixed(2)} of ${element.tagName} ${element.className}`);
      }
    }
    for (const image of all('img')) {
      if (luminance(backgroundOf(image.parentElement)) < 0.55) {
        faults.push(`${nameOf(image)} lies on dark ground`);
      }
    }
    return [...new Set(faults)];
  };

  // Every button, each language in turn.
  const copies = async () => {
    const faults = [];
    const languages = ['shell', 'python', 'node', 'c'];
    const boxes = all('.code');
    for (const [number, box] of boxes.entries()) {
      const language = languages[number % languages.length];
      box.querySelector(`input.${language}`).checked = true;
      const button = box.querySelector('.copy');
      const said = answer(button);
      button.click();
      const word = await said;
      const text = await navigator.clipboard.readText();
      const wanted = box.querySelector(`pre.${language}`).textContent;
      if (word !== 'Copied' || text !== wanted || !wanted.trim()) {
        faults.push(`${box.dataset.file} in ${language}: ${word}, ${text.slice(0, 80)}`);
      }
    }
    return { faults, count: boxes.length };
  };

  // What an element says next, however soon it goes back to its usual word.
  const answer = (element) => new Promise((done) => {
    new MutationObserver((_, observer) => {
      observer.disconnect();
      done(element.textContent);
    }).observe(element, { childList: true, characterData: true, subtree: true });
  });

  const links = () => [...new Set([
    ...all('a[href]').map((link) => link.getAttribute('href')).filter((target) => !target.startsWith('#')),
    ...all('img').map(nameOf)])];

  // The middle of an element, scrolled into the window.
  const place = (selector) => {
    const element = document.querySelector(selector);
    element.scrollIntoView({ block: 'nearest' });
    const box = element.getBoundingClientRect();
    return [box.left + box.width / 2, box.top + box.height / 2];
  };

  const background = () => getComputedStyle(document.body).backgroundColor;
  return { showAll, layout, index, colours, copies, answer, links, place, background, settled: frame };
})();
undefined;
