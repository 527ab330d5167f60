// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

/*
 * imgplugin.js: the image plugin's loader, shared by the published book and the preview page.
 * No dependencies. In a page, load it with a plain <script src="imgplugin.js"></script>; it
 * defines the global ImgPlugin. In Node, load it with require: module.exports is that object.
 *
 * The book's "bookPlugin.js" holds the settings script scrambled: two letters per UTF-8 byte of
 * the script (the letters of byte p come from the (p mod 3)-th sixteen of "A".."v"), then an
 * eight-digit hexadecimal key, then "_"; the bytes are run through RC4 under that key. The
 * preview's "config.js" is the plain script "var config={...};" (after a byte-order mark).
 *
 * API
 *   ImgPlugin.unscramble(text) -> string
 *       The script text that was scrambled into text (the content of "bookPlugin.js"). Blank
 *       space around the text is ignored. Throws an Error when text is not of the scrambled form.
 *   ImgPlugin.readSettings(scriptText, varName) -> object
 *       The settings object of the script "var <varName>=<JSON>;", read with JSON.parse: the
 *       script is never evaluated. A leading byte-order mark and blank space are ignored.
 *       Throws an Error with a clear message when the script does not have that form or its
 *       value is not a valid JSON object (an empty or malformed number setting makes invalid
 *       JSON, for example).
 *   ImgPlugin.load(scrambledText) -> object
 *       readSettings(unscramble(scrambledText), "bookPlugin"): the book's settings.
 *   ImgPlugin.placeImage(pageElement, settings, options) -> img element
 *       Places the plugin's image on a page element: position and size in percent of the page
 *       from settings.properties.basic left/top/width/height, opacity from settings.opacity
 *       (limited to 0..1), layer from settings.layout, and the image from
 *       settings.properties.extended.src (blank space around it ignored). A link ("scheme://",
 *       "data:", "blob:", "//host" or "/path") is used as it is ("//host" as https on a page
 *       opened from files); anything else is a file name,
 *       every part of it percent-encoded (so "#", "?", "%", ":" and "\" are characters of the
 *       name) and taken under options.filesBase ("files/plugin" in the book, "" in the
 *       preview) unless it already starts with it; the folder itself (what an empty file
 *       setting becomes in the book) is no image. Margins that leave no width or no height show
 *       no image. Settings that are missing or unreadable leave that property alone; an empty
 *       src hides the image, and so does an image that fails to load (no broken-image mark).
 *
 *       Stacking: the page element becomes a stacking context of its own (isolation: isolate,
 *       and position: relative when it is not positioned, by its computed style where the
 *       document has one). Layer 0 is z-index -1 in it: beneath everything the page holds,
 *       above the page's own background. Layer 1 and more are that z-index: above the page's
 *       content that has no z-index of its own. A host page needs no z-index on its content and
 *       must not give the page element a background image it wants above layer 0.
 *       The image never takes pointer input (pointer-events: none, draggable="false"): links
 *       and text under it stay usable at every transparency.
 *
 *       The first call creates an <img> and appends it to pageElement; later calls for the
 *       same page update that <img>.
 *       options: { filesBase: string, document: Document } (both optional; the document
 *       defaults to pageElement.ownerDocument, then the global document). Only
 *       document.createElement, element.style, setAttribute, getAttribute, removeAttribute,
 *       addEventListener (where there is one) and appendChild are used.
 *   ImgPlugin.frameOf(settings) -> { left, top, width, height, opacity, zIndex, noRoom }
 *       The CSS values placeImage uses (strings, or undefined when the setting is unusable; a
 *       negative size is "0%"), and whether the margins leave no room.
 *   ImgPlugin.imageSource(src, filesBase) -> string
 *       The image address placeImage uses for a src value.
 *   ImgPlugin.rc4(bytes, key) -> Uint8Array and ImgPlugin.decodeUtf8(bytes) -> string
 *       The two steps of unscramble, for tests and tools.
 */
(function (root, factory) {
  'use strict';
  var api = factory();
  if (typeof module === 'object' && module && module.exports) {
    module.exports = api;
  } else {
    root.ImgPlugin = api;
  }
})(typeof globalThis !== 'undefined' ? globalThis : this, function () {
  'use strict';

  var KEY_LENGTH = 8;

  // Index of a letter among the first 48 of the Base64 alphabet ("A".."Z", "a".."v"), or -1.
  function letterIndex(code) {
    if (code >= 65 && code <= 90) return code - 65;
    if (code >= 97 && code <= 118) return code - 97 + 26;
    return -1;
  }

  function isHexDigit(code) {
    return (code >= 48 && code <= 57) || (code >= 97 && code <= 102) || (code >= 65 && code <= 70);
  }

  // RC4 over a 256-byte state; key is a text of single-byte characters (the hex key).
  function rc4(bytes, key) {
    var s = new Uint8Array(256);
    var x, j, t;
    for (x = 0; x < 256; ++x) s[x] = x;
    var keyLength = key.length % 256;
    j = 0;
    for (x = 0; x < 256; ++x) {
      var k = keyLength ? key.charCodeAt(x % keyLength) & 0xff : 0;
      j = (k + j + s[x]) & 0xff;
      t = s[x]; s[x] = s[j]; s[j] = t;
    }
    var out = new Uint8Array(bytes.length);
    var i = 0;
    j = 0;
    for (x = 0; x < bytes.length; ++x) {
      i = (i + 1) & 0xff;
      j = (j + s[i]) & 0xff;
      t = s[i]; s[i] = s[j]; s[j] = t;
      out[x] = bytes[x] ^ s[(s[i] + s[j]) & 0xff];
    }
    return out;
  }

  // UTF-8 to text; a malformed sequence gives U+FFFD, as a browser's decoder does.
  function decodeUtf8(bytes) {
    var parts = [];
    var units = [];
    var n = bytes.length;
    for (var p = 0; p < n;) {
      var b = bytes[p];
      var cp = 0xfffd;
      var need = 0;
      var min = 0;
      if (b < 0x80) { cp = b; }
      else if (b >= 0xc2 && b <= 0xdf) { cp = b & 0x1f; need = 1; min = 0x80; }
      else if (b >= 0xe0 && b <= 0xef) { cp = b & 0x0f; need = 2; min = 0x800; }
      else if (b >= 0xf0 && b <= 0xf4) { cp = b & 0x07; need = 3; min = 0x10000; }
      ++p;
      if (need) {
        var q = 0;
        while (q < need && p + q < n && (bytes[p + q] & 0xc0) === 0x80) {
          cp = (cp << 6) | (bytes[p + q] & 0x3f);
          ++q;
        }
        // A broken sequence counts once, with the continuation bytes it did have.
        p += q;
        if (q < need || cp < min || cp > 0x10ffff || (cp >= 0xd800 && cp <= 0xdfff)) {
          cp = 0xfffd;
        }
      }
      if (cp > 0xffff) {
        cp -= 0x10000;
        units.push(0xd800 + (cp >> 10), 0xdc00 + (cp & 0x3ff));
      } else {
        units.push(cp);
      }
      if (units.length >= 8192) {
        parts.push(String.fromCharCode.apply(null, units));
        units = [];
      }
    }
    parts.push(String.fromCharCode.apply(null, units));
    return parts.join('');
  }

  function unscramble(text) {
    if (typeof text !== 'string') throw new TypeError('ImgPlugin.unscramble: expects a string');
    var scrambled = text.replace(/^[\s\uFEFF]+|\s+$/g, '');
    if (scrambled.length < KEY_LENGTH + 1 || scrambled.charAt(scrambled.length - 1) !== '_') {
      throw new Error('ImgPlugin.unscramble: not a scrambled script (it must end with an ' +
                      'eight-digit key and "_")');
    }
    var bodyLength = scrambled.length - KEY_LENGTH - 1;
    var key = scrambled.substr(bodyLength, KEY_LENGTH);
    for (var k = 0; k < KEY_LENGTH; ++k) {
      if (!isHexDigit(key.charCodeAt(k))) {
        throw new Error('ImgPlugin.unscramble: the key "' + key + '" is not hexadecimal');
      }
    }
    if (bodyLength % 2 !== 0) {
      throw new Error('ImgPlugin.unscramble: not a scrambled script (odd number of letters)');
    }
    var bytes = new Uint8Array(bodyLength / 2);
    var third = 0;
    for (var p = 0; p < bytes.length; ++p) {
      var high = letterIndex(scrambled.charCodeAt(2 * p)) - 16 * third;
      var low = letterIndex(scrambled.charCodeAt(2 * p + 1)) - 16 * third;
      if (high < 0 || high > 15 || low < 0 || low > 15) {
        throw new Error('ImgPlugin.unscramble: unexpected letters at position ' + 2 * p);
      }
      bytes[p] = high * 16 + low;
      third = third > 1 ? 0 : third + 1;
    }
    return decodeUtf8(rc4(bytes, key));
  }

  function readSettings(scriptText, varName) {
    if (typeof scriptText !== 'string') {
      throw new TypeError('ImgPlugin.readSettings: expects the script as a string');
    }
    if (typeof varName !== 'string' || !/^[A-Za-z_$][\w$]*$/.test(varName)) {
      throw new TypeError('ImgPlugin.readSettings: "' + varName + '" is not a variable name');
    }
    var text = scriptText.replace(/^[\s\uFEFF]+|\s+$/g, '');
    var prefix = 'var ' + varName + '=';
    if (text.slice(0, prefix.length) !== prefix) {
      throw new Error('ImgPlugin.readSettings: the script does not start with "' + prefix + '"');
    }
    if (text.charAt(text.length - 1) !== ';') {
      throw new Error('ImgPlugin.readSettings: the script of ' + varName +
                      ' does not end with ";"');
    }
    var json = text.slice(prefix.length, text.length - 1);
    var value;
    try {
      value = JSON.parse(json);
    } catch (error) {
      throw new Error('ImgPlugin.readSettings: the settings of ' + varName +
                      ' are not valid JSON (' + error.message + ')');
    }
    if (value === null || typeof value !== 'object' || Array.isArray(value)) {
      throw new Error('ImgPlugin.readSettings: the settings of ' + varName +
                      ' are not an object');
    }
    return value;
  }

  function load(scrambledText) {
    return readSettings(unscramble(scrambledText), 'bookPlugin');
  }

  function member(object, name) {
    return object !== null && typeof object === 'object' && !Array.isArray(object)
      ? object[name] : undefined;
  }

  // A percentage setting ("10.0%", "10.0" or 10) as CSS, or undefined.
  function percent(value) {
    if (typeof value === 'number') return isFinite(value) ? value + '%' : undefined;
    if (typeof value !== 'string') return undefined;
    var match = /^\s*(-?(?:\d+\.?\d*|\.\d+))\s*%?\s*$/.exec(value);
    return match ? match[1] + '%' : undefined;
  }

  function numberOf(value) {
    if (typeof value === 'number') return value;
    if (typeof value === 'string' && /^\s*-?(?:\d+\.?\d*|\.\d+)\s*$/.test(value)) {
      return parseFloat(value);
    }
    return NaN;
  }

  function frameOf(settings) {
    var basic = member(member(settings, 'properties'), 'basic');
    var opacity = numberOf(member(settings, 'opacity'));
    var layer = numberOf(member(settings, 'layout'));
    var width = percent(member(basic, 'width'));
    var height = percent(member(basic, 'height'));
    // Margins that leave no room give no box: CSS would refuse a negative size and show the
    // image at its own size instead.
    var noRoom = (width !== undefined && parseFloat(width) <= 0) ||
                 (height !== undefined && parseFloat(height) <= 0);
    return {
      left: percent(member(basic, 'left')),
      top: percent(member(basic, 'top')),
      width: width !== undefined && parseFloat(width) < 0 ? '0%' : width,
      height: height !== undefined && parseFloat(height) < 0 ? '0%' : height,
      // CSS knows no opacity beyond full or below none.
      opacity: isFinite(opacity) ? String(Math.min(1, Math.max(0, opacity))) : undefined,
      // Layer 0 lies beneath the page's content, in the stacking context the page makes.
      zIndex: isFinite(layer) ? String(Math.trunc(layer) <= 0 ? -1 : Math.trunc(layer))
                              : undefined,
      noRoom: noRoom,
    };
  }

  // A link is an address with a scheme and "//" ("https://host/a.png"), a "data:" or "blob:"
  // address, a host-relative "//host/a.png" or a server path "/a.png"; anything else is the
  // name of a file of the plugin, whatever characters it holds ("a:b.png", "photo #1.png").
  function isLink(value) {
    return /^[A-Za-z][A-Za-z0-9+.-]*:\/\//.test(value) || /^(data|blob):/i.test(value) ||
           value.charAt(0) === '/';
  }

  function imageSource(src, filesBase) {
    if (typeof src !== 'string') return '';
    // The window saves what the author typed; blank space around it is no part of the name.
    var value = src.trim();
    if (value === '') return '';
    if (isLink(value)) return value;
    var base = typeof filesBase === 'string' ? filesBase.replace(/\/+$/, '') : '';
    // An empty file setting reaches the book as the plugin's folder itself: no image.
    if (base !== '' && value.replace(/\/+$/, '') === base) return '';
    var name = base !== '' && value.slice(0, base.length + 1) === base + '/'
      ? value.slice(base.length + 1) : value.replace(/^(\.\/)+/, '');
    // Each part of the name is text, never URL syntax: "#", "?", "%" and the backslash are
    // characters of the file's name.
    var encoded = name.split('/').map(encodeURIComponent).join('/');
    return base === '' ? encoded : base + '/' + encoded;
  }

  // The page's CSS position as laid out (its style sheet included) where the document can tell.
  function positionOf(element, doc) {
    var view = doc.defaultView;
    if (view && typeof view.getComputedStyle === 'function') {
      var computed = view.getComputedStyle(element);
      if (computed && computed.position) return computed.position;
    }
    var inline = element.style ? element.style.position : '';
    return inline || 'static';
  }

  var placed = typeof WeakMap === 'function' ? new WeakMap() : null;

  function placeImage(pageElement, settings, options) {
    if (!pageElement || typeof pageElement.appendChild !== 'function') {
      throw new TypeError('ImgPlugin.placeImage: expects a page element');
    }
    options = options || {};
    var doc = options.document || pageElement.ownerDocument ||
              (typeof document !== 'undefined' ? document : null);
    if (!doc) throw new TypeError('ImgPlugin.placeImage: no document to create the image in');

    var image = placed ? placed.get(pageElement) : pageElement.imgPluginImage;
    if (!image) {
      image = doc.createElement('img');
      image.setAttribute('alt', '');
      image.setAttribute('data-img-plugin', '');
      // Decoration for the pointer: what lies under the image stays usable at every
      // transparency, and the image never starts a drag.
      image.setAttribute('draggable', 'false');
      pageElement.appendChild(image);
      if (placed) placed.set(pageElement, image); else pageElement.imgPluginImage = image;
      // Percentages are of the page only when the page is the positioned ancestor.
      if (positionOf(pageElement, doc) === 'static') pageElement.style.position = 'relative';
      // The page is the stacking context of its layers, whatever the page around it does.
      pageElement.style.isolation = 'isolate';
      // An image that cannot be loaded shows nothing rather than the browser's broken mark.
      if (typeof image.addEventListener === 'function') {
        var shown = image;
        shown.addEventListener('error', function () { shown.style.visibility = 'hidden'; });
        shown.addEventListener('load', function () { shown.style.visibility = ''; });
      }
    }

    var frame = frameOf(settings);
    var style = image.style;
    style.position = 'absolute';
    style.pointerEvents = 'none';
    ['left', 'top', 'width', 'height', 'opacity', 'zIndex'].forEach(function (name) {
      if (frame[name] !== undefined) style[name] = frame[name];
    });

    var src = imageSource(member(member(member(settings, 'properties'), 'extended'), 'src'),
                          options.filesBase);
    // A host-relative link means the web, also on a page opened from files (the preview, a local
    // book), where the browser would look for it among the files.
    if (src.slice(0, 2) === '//' && doc.location && doc.location.protocol === 'file:') {
      src = 'https:' + src;
    }
    if (src && !frame.noRoom) {
      // A new image gets its chance to load.
      if (style.visibility === 'hidden' && image.getAttribute('src') !== src) style.visibility = '';
      image.setAttribute('src', src);
      style.display = '';
    } else {
      if (typeof image.removeAttribute === 'function') image.removeAttribute('src');
      style.display = 'none';
    }
    return image;
  }

  return {
    unscramble: unscramble,
    readSettings: readSettings,
    load: load,
    placeImage: placeImage,
    frameOf: frameOf,
    imageSource: imageSource,
    rc4: rc4,
    decodeUtf8: decodeUtf8,
  };
});
