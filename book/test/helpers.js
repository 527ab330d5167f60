// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Shared by the book's tests: the C++ tool (its path comes from CTest) and a tiny DOM.
'use strict';
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');

const tool = process.env.IMGBUNDLE || '';
const noTool = tool ? false : 'IMGBUNDLE (the imgbundle tool, set by CTest) is not set';

function runTool(args, input) {
  const result = spawnSync(tool, args, {
    input: input === undefined ? '' : input,
    maxBuffer: 64 * 1024 * 1024,
  });
  if (result.error) throw result.error;
  return { status: result.status, stdout: result.stdout, stderr: result.stderr.toString() };
}

function scrambleWithTool(text) {
  const result = runTool(['scramble'], Buffer.from(text, 'utf8'));
  if (result.status !== 0) throw new Error('imgbundle scramble failed: ' + result.stderr);
  return result.stdout.toString('latin1');
}

function tempDir(t) {
  const dir = fs.mkdtempSync(path.join(os.tmpdir(), 'imgbook-'));
  t.after(() => fs.rmSync(dir, { recursive: true, force: true }));
  return dir;
}

// Just enough DOM for placeImage: createElement, style, setAttribute, appendChild.
class FakeElement {
  constructor(tagName) {
    this.tagName = tagName.toUpperCase();
    this.style = {};
    this.attributes = {};
    this.children = [];
    this.listeners = {};
  }
  setAttribute(name, value) { this.attributes[name] = String(value); }
  getAttribute(name) { return name in this.attributes ? this.attributes[name] : null; }
  removeAttribute(name) { delete this.attributes[name]; }
  addEventListener(type, listener) { this.listeners[type] = listener; }
  appendChild(child) { this.children.push(child); return child; }
}

class FakeDocument {
  constructor() { this.created = []; }
  createElement(tagName) {
    const element = new FakeElement(tagName);
    this.created.push(element);
    return element;
  }
}

module.exports = { tool, noTool, runTool, scrambleWithTool, tempDir, FakeElement, FakeDocument };
