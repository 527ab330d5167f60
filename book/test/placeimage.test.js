// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const ImgPlugin = require('../imgplugin.js');
const { FakeDocument, FakeElement } = require('./helpers.js');

function settingsWith(overrides) {
  return {
    opacity: 0.75,
    layout: 2,
    properties: {
      basic: { left: '10.0%', top: '20.0%', width: '60.0%', height: '65.0%' },
      extended: { src: 'photo.png' },
    },
    ...overrides,
  };
}

function page() {
  const doc = new FakeDocument();
  const element = new FakeElement('div');
  element.ownerDocument = doc;
  return { doc, element };
}

test('places the image by percent, opacity and layer', () => {
  const { doc, element } = page();
  const image = ImgPlugin.placeImage(element, settingsWith({}), { filesBase: '' });
  assert.equal(doc.created.length, 1);
  assert.equal(element.children[0], image);
  assert.equal(image.tagName, 'IMG');
  assert.deepEqual(image.style, {
    position: 'absolute', pointerEvents: 'none', left: '10.0%', top: '20.0%', width: '60.0%',
    height: '65.0%', opacity: '0.75', zIndex: '2', display: '',
  });
  assert.equal(image.attributes.draggable, 'false');
  assert.equal(element.style.isolation, 'isolate');
  assert.equal(image.attributes.src, 'photo.png');
  assert.equal(element.style.position, 'relative');
});

test('a page positioned by its style sheet keeps its position', () => {
  const { doc, element } = page();
  doc.defaultView = { getComputedStyle: (e) => (e === element ? { position: 'absolute' } : {}) };
  ImgPlugin.placeImage(element, settingsWith({}));
  assert.equal(element.style.position, undefined);
});

test('a second call updates the same image', () => {
  const { doc, element } = page();
  const first = ImgPlugin.placeImage(element, settingsWith({}));
  const second = ImgPlugin.placeImage(element, settingsWith({ opacity: 0.5, layout: 4 }));
  assert.equal(first, second);
  assert.equal(doc.created.length, 1);
  assert.equal(element.children.length, 1);
  assert.equal(second.style.opacity, '0.5');
  assert.equal(second.style.zIndex, '4');
});

test('a positioned page keeps its position', () => {
  const { element } = page();
  element.style.position = 'absolute';
  ImgPlugin.placeImage(element, settingsWith({}));
  assert.equal(element.style.position, 'absolute');
});

const sources = [
  ['file name in the book folder', 'photo.png', 'files/plugin', 'files/plugin/photo.png'],
  ['already in the book folder', 'files/plugin/photo.png', 'files/plugin', 'files/plugin/photo.png'],
  ['trailing slash of the folder', 'photo.png', 'files/plugin/', 'files/plugin/photo.png'],
  ['preview takes the name as it is', 'photo.png', '', 'photo.png'],
  ['web link', 'https://example.com/a.png', 'files/plugin', 'https://example.com/a.png'],
  ['data address', 'data:image/png;base64,AAAA', 'files/plugin', 'data:image/png;base64,AAAA'],
  ['absolute path', '/pics/a.png', 'files/plugin', '/pics/a.png'],
  ['name with blanks and accents', 'my phöto.png', 'files/plugin', 'files/plugin/my%20ph%C3%B6to.png'],
  ['name with a hash', 'photo #1.png', 'files/plugin', 'files/plugin/photo%20%231.png'],
  ['name with a question mark', 'what?.png', '', 'what%3F.png'],
  ['name with a percent sign and digits', 'a%20b.png', 'files/plugin', 'files/plugin/a%2520b.png'],
  ['name with a backslash', 'a\\b.png', '', 'a%5Cb.png'],
  ['name with a colon is a file, not a scheme', 'a:b.png', 'files/plugin', 'files/plugin/a%3Ab.png'],
  ['name with a quote and an emoji', "it's 😀.png", '', 'it\'s%20%F0%9F%98%80.png'],
  ['blanks around a file name are no part of it', '  photo.png \t', 'files/plugin', 'files/plugin/photo.png'],
  ['blanks around a link are no part of it', ' https://example.com/a b.png ', 'files/plugin', 'https://example.com/a b.png'],
  ['a host-relative link stays a link', '//example.com/x.png', 'files/plugin', '//example.com/x.png'],
];
for (const [name, src, filesBase, expected] of sources) {
  test(`image source: ${name}`, () => {
    const { element } = page();
    const settings = settingsWith({ properties: { basic: {}, extended: { src } } });
    const image = ImgPlugin.placeImage(element, settings, { filesBase });
    assert.equal(image.attributes.src, expected);
    assert.equal(ImgPlugin.imageSource(src, filesBase), expected);
  });
}

test('an empty source hides the image', () => {
  const { element } = page();
  const image = ImgPlugin.placeImage(element, settingsWith({ properties: { extended: { src: '' } } }),
                                     { filesBase: 'files/plugin' });
  assert.equal(image.style.display, 'none');
  assert.equal(image.attributes.src, undefined);
});

test('opacity beyond the range is limited for CSS', () => {
  assert.equal(ImgPlugin.frameOf({ opacity: 1.2 }).opacity, '1');
  assert.equal(ImgPlugin.frameOf({ opacity: -0.5 }).opacity, '0');
  assert.equal(ImgPlugin.frameOf({ opacity: '0.25' }).opacity, '0.25');
});

test('percent values in any readable form', () => {
  const frame = ImgPlugin.frameOf({ properties: { basic: { left: 10, top: '5', width: ' 30.5 % ', height: '-20.0%' } } });
  assert.deepEqual([frame.left, frame.top, frame.width, frame.height], ['10%', '5%', '30.5%', '0%']);
  assert.equal(frame.noRoom, true);
});

for (const [name, width, height] of [
  ['margins across that leave no width', '-20.0%', '30.0%'],
  ['margins down that leave no height', '30.0%', '-0.5%'],
  ['margins that meet exactly', '0.0%', '30.0%'],
]) {
  test(`no image where ${name}`, () => {
    const { element } = page();
    const image = ImgPlugin.placeImage(element, settingsWith({
      properties: { basic: { left: '60%', top: '10%', width, height }, extended: { src: 'a.png' } },
    }), { filesBase: 'files/plugin' });
    assert.equal(image.style.display, 'none');
    assert.equal(image.attributes.src, undefined);
    assert.ok(parseFloat(image.style.width) >= 0 && parseFloat(image.style.height) >= 0);
  });
}

test('layer 0 lies beneath the page content, other layers above it', () => {
  assert.equal(ImgPlugin.frameOf({ layout: 0 }).zIndex, '-1');
  assert.equal(ImgPlugin.frameOf({ layout: 1 }).zIndex, '1');
  assert.equal(ImgPlugin.frameOf({ layout: '1' }).zIndex, '1');
});

test('an image that fails to load is hidden, and shown again once a new one loads', () => {
  const { element } = page();
  const image = ImgPlugin.placeImage(element, settingsWith({}));
  assert.equal(typeof image.listeners.error, 'function');
  image.listeners.error();
  assert.equal(image.style.visibility, 'hidden');
  ImgPlugin.placeImage(element, settingsWith({ properties: { basic: {}, extended: { src: 'other.png' } } }));
  assert.equal(image.style.visibility, '');
  image.listeners.error();
  image.listeners.load();
  assert.equal(image.style.visibility, '');
});

test('unusable settings leave the style alone and never throw', () => {
  const { element } = page();
  const image = ImgPlugin.placeImage(element, {
    opacity: 'x', layout: null, properties: { basic: { left: 'far', top: {}, width: [], height: true } },
  });
  assert.deepEqual(image.style, { position: 'absolute', pointerEvents: 'none', display: 'none' });
  for (const settings of [{}, null, 'text', [], { properties: [] }]) {
    assert.doesNotThrow(() => ImgPlugin.placeImage(page().element, settings));
  }
});

test('the document can be given in the options', () => {
  const doc = new FakeDocument();
  const element = new FakeElement('div');
  ImgPlugin.placeImage(element, settingsWith({}), { document: doc });
  assert.equal(doc.created.length, 1);
});

test('a missing page or document is a type error', () => {
  assert.throws(() => ImgPlugin.placeImage(null, {}), TypeError);
  assert.throws(() => ImgPlugin.placeImage(new FakeElement('div'), {}), TypeError);
});

test('in a page the script defines the global ImgPlugin', () => {
  const fs = require('node:fs');
  const vm = require('node:vm');
  const context = vm.createContext({});
  vm.runInContext(fs.readFileSync(require.resolve('../imgplugin.js'), 'utf8'), context);
  assert.equal(typeof context.ImgPlugin.unscramble, 'function');
  assert.equal(typeof context.ImgPlugin.readSettings, 'function');
  assert.equal(typeof context.ImgPlugin.placeImage, 'function');
});

test('the loader needs nothing but itself', () => {
  const fs = require('node:fs');
  const source = fs.readFileSync(require.resolve('../imgplugin.js'), 'utf8');
  assert.doesNotMatch(source, /\brequire\s*\(|\bimport\s*[({'"\w]/);
});

for (const [name, src] of [['the plugin folder', 'files/plugin'],
                           ['the plugin folder with a slash', 'files/plugin/']]) {
  test(`image source: ${name} itself is no image`, () => {
    const { element } = page();
    const settings = settingsWith({ properties: { basic: {}, extended: { src } } });
    const image = ImgPlugin.placeImage(element, settings, { filesBase: 'files/plugin' });
    assert.equal(image.attributes.src, undefined);
    assert.equal(image.style.display, 'none');
    assert.equal(ImgPlugin.imageSource(src, 'files/plugin'), '');
  });
}

test('a host-relative link is a web link on a page opened from files', () => {
  for (const [protocol, expected] of [['file:', 'https://example.com/x.png'],
                                      ['https:', '//example.com/x.png']]) {
    const { doc, element } = page();
    doc.location = { protocol };
    const image = ImgPlugin.placeImage(element, settingsWith({
      properties: { basic: {}, extended: { src: '//example.com/x.png' } },
    }));
    assert.equal(image.attributes.src, expected);
  }
});
