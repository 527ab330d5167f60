// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

'use strict';
// The tool writes the workspace's scripts with the C++ code; the loader reads them back.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const ImgPlugin = require('../imgplugin.js');
const { noTool, runTool, tempDir, FakeDocument, FakeElement } = require('./helpers.js');

const BOM = '\uFEFF';

function description(text) {
  return '<?xml version="1.0" encoding="UTF-8"?>\n<info>\n' +
    '  <opacity type="number">1</opacity>\n  <layout type="number">1</layout>\n' +
    '  <properties>\n    <basic>\n' +
    '      <left type="text">0%</left>\n      <top type="text">0%</top>\n' +
    '      <width type="text">0%</width>\n      <height type="text">0%</height>\n' +
    '    </basic>\n    <extended>\n' +
    `      <src type="file">photo 1.png</src>\n      <caption type="text">${text}</caption>\n` +
    '      <show type="bool">TRUE</show>\n      <tint type="color">0x00ff00</tint>\n' +
    '    </extended>\n  </properties>\n</info>\n';
}

function workspace(t, text, withImage) {
  const dir = tempDir(t);
  fs.writeFileSync(path.join(dir, 'img.xml'), description(text), 'utf8');
  fs.writeFileSync(path.join(dir, 'settings.dat'), '10.0\n20.0\n30.0\n15.0\n25.0\n2');
  if (withImage) fs.writeFileSync(path.join(dir, 'photo 1.png'), 'png');
  return dir;
}

function tool(args) {
  const result = runTool(args);
  assert.equal(result.status, 0, result.stderr);
  return result.stdout.toString('utf8');
}

const captions = {
  'ASCII settings': 'Say &quot;hi&quot; &amp; bye',
  'non-ASCII settings': 'Grüße, 日本 \u{1F600}',
};

for (const [name, caption] of Object.entries(captions)) {
  test(`publish and the loader give back the scrambled text: ${name}`, { skip: noTool }, (t) => {
    const dir = workspace(t, caption, false);
    assert.equal(tool(['config', '--workspace', dir]).trim(), path.join(dir, 'config.js'));
    assert.equal(tool(['publish', '--workspace', dir]).trim(), path.join(dir, 'bookPlugin.js'));

    const config = fs.readFileSync(path.join(dir, 'config.js'), 'utf8');
    assert.ok(config.startsWith(BOM + 'var config={'));
    const json = config.slice((BOM + 'var config=').length, -1);
    const scrambled = fs.readFileSync(path.join(dir, 'bookPlugin.js'), 'latin1');
    assert.match(scrambled, /^[A-Za-v]+[0-9a-fA-F]{8}_$/);

    // Without an image in the workspace both scripts carry the same settings.
    const restored = ImgPlugin.unscramble(scrambled);
    assert.equal(restored, `var bookPlugin=${json};`);
    assert.equal(runTool(['unscramble'], scrambled).stdout.toString('utf8'), restored);

    const settings = ImgPlugin.load(scrambled);
    assert.deepEqual(settings, ImgPlugin.readSettings(config, 'config'));
    assert.equal(settings.opacity, 0.75);
    assert.equal(settings.layout, 2);
    assert.deepEqual(settings.properties.basic,
                     { left: '10.0%', top: '20.0%', width: '60.0%', height: '65.0%' });
    assert.equal(settings.properties.extended.show, true);
    assert.equal(settings.properties.extended.tint, '#00ff00');
  });
}

test('the ASCII caption reaches the page unescaped', { skip: noTool }, (t) => {
  const dir = workspace(t, captions['ASCII settings'], false);
  tool(['publish', '--workspace', dir]);
  const settings = ImgPlugin.load(fs.readFileSync(path.join(dir, 'bookPlugin.js'), 'latin1'));
  assert.equal(settings.properties.extended.caption, 'Say "hi" & bye');
});

test('an image in the workspace is found in the book folder', { skip: noTool }, (t) => {
  const dir = workspace(t, 'x', true);
  tool(['config', '--workspace', dir]);
  tool(['publish', '--workspace', dir]);
  const preview = ImgPlugin.readSettings(fs.readFileSync(path.join(dir, 'config.js'), 'utf8'),
                                         'config');
  const book = ImgPlugin.load(fs.readFileSync(path.join(dir, 'bookPlugin.js'), 'latin1'));
  assert.equal(preview.properties.extended.src, 'photo 1.png');
  assert.equal(book.properties.extended.src, 'files/plugin/photo 1.png');

  const doc = new FakeDocument();
  const page = new FakeElement('div');
  const image = ImgPlugin.placeImage(page, book, { document: doc, filesBase: 'files/plugin' });
  // The blank of the name is a character of it, not URL syntax.
  assert.equal(image.attributes.src, 'files/plugin/photo%201.png');
  assert.equal(image.style.left, '10.0%');
  assert.equal(image.style.zIndex, '2');
});

test('an empty number makes the book settings unreadable, reported clearly', { skip: noTool }, (t) => {
  const dir = tempDir(t);
  fs.writeFileSync(path.join(dir, 'img.xml'), '<info><n type="number"></n></info>');
  fs.writeFileSync(path.join(dir, 'settings.dat'), '1\n2\n3\n4\n5\n6');
  tool(['publish', '--workspace', dir]);
  const text = ImgPlugin.unscramble(fs.readFileSync(path.join(dir, 'bookPlugin.js'), 'latin1'));
  assert.equal(text, 'var bookPlugin={"n":};');
  assert.throws(() => ImgPlugin.readSettings(text, 'bookPlugin'), /not valid JSON/);
});

test('json prints the description as the page reads it', { skip: noTool }, (t) => {
  const dir = workspace(t, 'a\\b', true);
  const file = path.join(dir, 'img.xml');
  assert.equal(tool(['json', file]),
               '{"opacity":1,"layout":1,"properties":{"basic":{"left":"0%","top":"0%",' +
               '"width":"0%","height":"0%"},"extended":{"src":"photo 1.png",' +
               '"caption":"a\\\\b","show":true,"tint":"#00ff00"}}}\n');
  assert.match(tool(['json', file, '--relate', 'files/plugin']),
               /"src":"files\/plugin\/photo 1.png"/);
  assert.match(tool(['json', file, '--relate=files/plugin', '--workspace', tempDir(t)]),
               /"src":"photo 1.png"/);
});

const failures = [
  ['json without a file', ['json'], 2],
  ['json with two files', ['json', 'a.xml', 'b.xml'], 2],
  ['json with an unknown option', ['json', 'a.xml', '--bogus'], 2],
  ['json with an option lacking its value', ['json', 'a.xml', '--relate'], 2],
  ['json of a missing file', ['json', '/nonexistent/img.xml'], 1],
  ['config without a workspace', ['config'], 2],
  ['config with a stray argument', ['config', '--workspace', '/tmp', 'x'], 2],
  ['config of a missing workspace', ['config', '--workspace', '/nonexistent/ws'], 1],
  ['publish without a workspace', ['publish'], 2],
  ['scramble with an argument', ['scramble', 'x'], 2],
  ['unscramble with an argument', ['unscramble', 'x'], 2],
];
for (const [name, args, status] of failures) {
  test(`bad use gives one line and a non-zero exit: ${name}`, { skip: noTool }, () => {
    const result = runTool(args);
    assert.equal(result.status, status);
    assert.equal(result.stderr.trim().split('\n').length, 1, result.stderr);
    assert.equal(result.stdout.length, 0);
  });
}

test('json of malformed XML fails with one line', { skip: noTool }, (t) => {
  const file = path.join(tempDir(t), 'img.xml');
  fs.writeFileSync(file, '<info><a></info>');
  const result = runTool(['json', file]);
  assert.equal(result.status, 1);
  assert.match(result.stderr, /not well-formed XML/);
});

test('config and publish say why nothing was written', { skip: noTool }, (t) => {
  const dir = tempDir(t);
  let result = runTool(['config', '--workspace', dir]);
  assert.equal(result.status, 1);
  assert.match(result.stderr, /no readable img\.xml/);
  fs.writeFileSync(path.join(dir, 'img.xml'), '<info/>');
  result = runTool(['publish', '--workspace', dir]);
  assert.equal(result.status, 1);
  assert.match(result.stderr, /no settings\.dat or defaultsettings\.dat/);
  assert.ok(!fs.existsSync(path.join(dir, 'bookPlugin.js')));
});

test('config and publish fail when the script cannot be written', { skip: noTool }, (t) => {
  const dir = workspace(t, 'x', false);
  fs.mkdirSync(path.join(dir, 'config.js'));
  fs.mkdirSync(path.join(dir, 'bookPlugin.js'));
  for (const command of ['config', 'publish']) {
    const result = runTool([command, '--workspace', dir]);
    assert.equal(result.status, 1);
    assert.match(result.stderr, /cannot write/);
  }
});

test('unscramble of text that is not scrambled fails', { skip: noTool }, () => {
  const result = runTool(['unscramble'], 'var config={};');
  assert.equal(result.status, 1);
  assert.match(result.stderr, /not a scrambled script/);
});

test('scramble of text that is not UTF-8 fails', { skip: noTool }, () => {
  const result = runTool(['scramble'], Buffer.from([0x61, 0xff, 0x62]));
  assert.equal(result.status, 1);
  assert.match(result.stderr, /not UTF-8/);
});

for (const command of ['json', 'config', 'publish', 'scramble', 'unscramble']) {
  test(`${command} --help prints its usage`, { skip: noTool }, () => {
    const result = runTool([command, '--help']);
    assert.equal(result.status, 0);
    assert.ok(result.stdout.toString().startsWith(`Usage: imgbundle ${command}`));
  });
}

// Any legal file name gives valid script: the name comes back whole in both scripts, and the
// preview's script parses as script, not only as the loader reads it.
const awkwardNames = {
  'a quote': 'my "best" photo.png',
  'a backslash': 'a\\b.png',
  'a tab': 'a\tb.png',
  'a line separator': 'a\u2028b.png',
  'code in a name': 'x"};globalThis.ran=1;".png',
};

for (const [name, file] of Object.entries(awkwardNames)) {
  test(`an image named with ${name} stays a string in both scripts`, { skip: noTool }, (t) => {
    const dir = tempDir(t);
    const xmlText = file.replace(/&/g, '&amp;').replace(/</g, '&lt;');
    fs.writeFileSync(path.join(dir, 'img.xml'),
                     `<info><extended><src type="file">${xmlText}</src></extended></info>`, 'utf8');
    fs.writeFileSync(path.join(dir, 'settings.dat'), '10.0\n20.0\n30.0\n15.0\n25.0\n2');
    fs.writeFileSync(path.join(dir, file), 'png');
    tool(['config', '--workspace', dir]);
    tool(['publish', '--workspace', dir]);

    const config = fs.readFileSync(path.join(dir, 'config.js'), 'utf8');
    assert.equal(ImgPlugin.readSettings(config, 'config').extended.src, file);
    const vm = require('node:vm');
    const sandbox = {};
    vm.runInNewContext(config.slice(BOM.length), sandbox);
    assert.equal(sandbox.config.extended.src, file);
    assert.equal(sandbox.ran, undefined);

    const scrambled = fs.readFileSync(path.join(dir, 'bookPlugin.js'), 'latin1');
    assert.equal(ImgPlugin.load(scrambled).extended.src, `files/plugin/${file}`);
  });
}
