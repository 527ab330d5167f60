// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const ImgPlugin = require('../imgplugin.js');

test('reads the settings object of the named variable', () => {
  const settings = ImgPlugin.readSettings('var config={"opacity":0.75,"a":[{"b":true}]};', 'config');
  assert.deepEqual(settings, { opacity: 0.75, a: [{ b: true }] });
});

test('a byte-order mark and blank space around the script are ignored', () => {
  assert.deepEqual(ImgPlugin.readSettings('\uFEFFvar config={"x":1};\n', 'config'), { x: 1 });
});

test('an empty number setting is reported, not evaluated', () => {
  assert.throws(() => ImgPlugin.readSettings('var bookPlugin={"n":};', 'bookPlugin'),
                /settings of bookPlugin are not valid JSON/);
});

test('a malformed number setting is reported', () => {
  assert.throws(() => ImgPlugin.readSettings('var config={"n":12abc};', 'config'),
                /not valid JSON/);
});

test('script in place of settings is never run', () => {
  delete globalThis.imgPluginRan;
  assert.throws(() => ImgPlugin.readSettings('var config=(globalThis.imgPluginRan=1,{});', 'config'),
                /not valid JSON/);
  assert.equal(globalThis.imgPluginRan, undefined);
});

test('another variable name is reported', () => {
  assert.throws(() => ImgPlugin.readSettings('var config={};', 'bookPlugin'),
                /does not start with "var bookPlugin="/);
});

test('a description without "info" gives no object and is reported', () => {
  assert.throws(() => ImgPlugin.readSettings('var config="settings":{"opacity":1};', 'config'),
                /not valid JSON/);
});

test('a script without the final semicolon is reported', () => {
  assert.throws(() => ImgPlugin.readSettings('var config={}', 'config'), /does not end with ";"/);
});

test('a value that is not an object is reported', () => {
  assert.throws(() => ImgPlugin.readSettings('var config=[1];', 'config'), /not an object/);
  assert.throws(() => ImgPlugin.readSettings('var config=null;', 'config'), /not an object/);
});

test('bad arguments throw type errors', () => {
  assert.throws(() => ImgPlugin.readSettings(undefined, 'config'), TypeError);
  assert.throws(() => ImgPlugin.readSettings('var a={};', 'a b'), TypeError);
  assert.throws(() => ImgPlugin.readSettings('var a={};', ''), TypeError);
});

test('load reads the book settings from the scrambled form', () => {
  // Scrambled here with the loader's own RC4 so the test needs no tool.
  const text = 'var bookPlugin={"layout":3};';
  const key = '0a1B2c3D';
  const bytes = ImgPlugin.rc4(Buffer.from(text, 'utf8'), key);
  const letters = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz';
  let scrambled = '';
  bytes.forEach((b, p) => {
    const r = p % 3;
    scrambled += letters[16 * r + (b >> 4)] + letters[16 * r + (b & 15)];
  });
  assert.deepEqual(ImgPlugin.load(scrambled + key + '_'), { layout: 3 });
});
