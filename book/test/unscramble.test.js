// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const ImgPlugin = require('../imgplugin.js');
const { noTool, runTool, scrambleWithTool } = require('./helpers.js');

const texts = {
  'empty text': '',
  'ASCII script': 'var bookPlugin={"opacity":1,"layout":2,"src":"files/plugin/a.png"};',
  'accented letters': 'var bookPlugin={"t":"Grüße, café, naïve"};',
  'CJK and emoji': 'var bookPlugin={"t":"日本語 \u{1F600} \u{10FFFF}"};',
  'quotes, backslashes and breaks': 'var bookPlugin={"t":"a\\"b\\\\c<br/>d\\u00e9"};',
  'one byte': 'x',
  'two bytes': 'xy',
  'three bytes': 'xyz',
};

for (const [name, text] of Object.entries(texts)) {
  test(`the book restores what the tool scrambled: ${name}`, { skip: noTool }, () => {
    const scrambled = scrambleWithTool(text);
    assert.equal(scrambled.length, 2 * Buffer.byteLength(text, 'utf8') + 9);
    assert.equal(ImgPlugin.unscramble(scrambled), text);
  });
}

test('a megabyte scrambled by the tool comes back whole', { skip: noTool }, () => {
  let text = '';
  for (let k = 0; text.length < 1000000; ++k) text += `{"row":${k},"t":"é日"},`;
  assert.equal(ImgPlugin.unscramble(scrambleWithTool(text)), text);
});

test('two scrambles of one text differ and both restore', { skip: noTool }, () => {
  const text = 'var bookPlugin={"opacity":0.5};';
  const first = scrambleWithTool(text);
  let second = scrambleWithTool(text);
  for (let tries = 0; second === first && tries < 50; ++tries) second = scrambleWithTool(text);
  assert.notEqual(first, second);
  assert.equal(ImgPlugin.unscramble(first), text);
  assert.equal(ImgPlugin.unscramble(second), text);
});

test('the tool restores what it scrambled, byte for byte', { skip: noTool }, () => {
  const text = 'var bookPlugin={"t":"Grüße"};\n';
  const result = runTool(['unscramble'], scrambleWithTool(text) + '\n');
  assert.equal(result.status, 0);
  assert.equal(result.stdout.toString('utf8'), text);
});

test('blank space around the scrambled text is ignored', { skip: noTool }, () => {
  const scrambled = scrambleWithTool('abc');
  assert.equal(ImgPlugin.unscramble(`\uFEFF \n${scrambled}\r\n`), 'abc');
});

test('RC4 gives the known keystream', () => {
  const out = ImgPlugin.rc4(Buffer.from('Plaintext'), 'Key');
  assert.equal(Buffer.from(out).toString('hex'), 'bbf316e8d940af0ad3');
  assert.deepEqual([...ImgPlugin.rc4(new Uint8Array(0), '01234567')], []);
});

test('UTF-8 decoding agrees with the platform decoder', () => {
  const samples = ['', 'plain', 'é', '€', '日本', '\u{1F600}', 'a\u0000b', '\u{10FFFF}\uFFFD'];
  for (const sample of samples) {
    assert.equal(ImgPlugin.decodeUtf8(Buffer.from(sample, 'utf8')), sample);
  }
  let long = '';
  for (let k = 0; k < 20000; ++k) long += String.fromCodePoint(0x20 + (k * 7919) % 0x2ff00);
  const wellFormed = long.replace(/[\uD800-\uDFFF]/g, '\uFFFD');
  assert.equal(ImgPlugin.decodeUtf8(Buffer.from(wellFormed, 'utf8')), wellFormed);
});

test('broken UTF-8 becomes replacement characters, never an exception', () => {
  const broken = [[0xff], [0xc3], [0xe6, 0x97], [0xed, 0xa0, 0x80], [0xc0, 0x80], [0x80, 0x41]];
  for (const bytes of broken) {
    const text = ImgPlugin.decodeUtf8(Uint8Array.from(bytes));
    assert.ok(text.includes('\uFFFD'), JSON.stringify(bytes));
  }
  assert.equal(ImgPlugin.decodeUtf8(Uint8Array.from([0xc3, 0x41])), '\uFFFDA');
});

const malformed = {
  'empty text': '',
  'no final underscore': 'ABCD12345678',
  'too short for a key': 'AB1234_',
  'odd number of letters': 'ABC12345678_',
  'letter beyond v': 'Az12345678_',
  'second pair outside its third': 'AAAA12345678_',
  'key not hexadecimal': 'AB1234567g_',
};
for (const [name, text] of Object.entries(malformed)) {
  test(`a malformed scrambled text throws: ${name}`, () => {
    assert.throws(() => ImgPlugin.unscramble(text), /ImgPlugin\.unscramble/);
  });
}

test('a non-string throws a type error', () => {
  assert.throws(() => ImgPlugin.unscramble(null), TypeError);
});
