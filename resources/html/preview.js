// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Shows the plugin on the preview page: the image placed by the book's loader from the settings in
// "config.js", or a placeholder where the image goes when none is chosen or it cannot be loaded.
// window.previewState() tells what is shown, for the settings window and its tests.
(function () {
    'use strict';

    // The settings window gives its own language's texts before the page loads; a page opened
    // on its own speaks English.
    var given = typeof window.imgPreviewTexts === 'object' && window.imgPreviewTexts !== null
        ? window.imgPreviewTexts : {};
    var texts = {
        none: given.none || 'No image chosen',
        broken: given.broken || 'The image cannot be loaded',
        nosettings: given.nosettings || 'No settings to preview yet'
    };
    if (typeof given.lang === 'string' && given.lang)
        document.documentElement.lang = given.lang;

    var page = document.getElementById('page');
    var placeholder = document.getElementById('placeholder');
    var placeholderText = document.getElementById('placeholder-text');
    var image = null;
    var state = { status: 'loading', reason: '' };

    function currentSettings() {
        return typeof config === 'object' && config !== null ? config : null;
    }

    function imageSource(settings) {
        var properties = settings.properties || {};
        var extended = properties.extended || {};
        return typeof extended.src === 'string' ? extended.src.trim() : '';
    }

    // The placeholder takes the box and layer that the loader gave the image, so the author still
    // sees where the image goes. Without settings it stands in the middle of the page.
    function showPlaceholder(reason) {
        state = { status: 'placeholder', reason: reason };
        placeholderText.textContent = texts[reason];
        placeholder.classList.toggle('broken', reason === 'broken');
        var style = placeholder.style;
        if (image) {
            style.left = image.style.left;
            style.top = image.style.top;
            style.width = image.style.width;
            style.height = image.style.height;
            style.zIndex = image.style.zIndex;
            image.style.visibility = 'hidden';
        } else {
            style.left = '20%';
            style.top = '35%';
            style.width = '60%';
            style.height = '30%';
        }
        placeholder.hidden = false;
    }

    function showImage() {
        state = { status: 'image', reason: '' };
        placeholder.hidden = true;
        image.style.visibility = '';
    }

    function findPlacedImage(result) {
        if (result && result.tagName === 'IMG')
            return result;
        return page.querySelector('img');
    }

    function show() {
        var settings = currentSettings();
        if (!settings || typeof ImgPlugin !== 'object') {
            showPlaceholder('nosettings');
            return;
        }
        image = findPlacedImage(ImgPlugin.placeImage(page, settings, { filesBase: '' }));
        if (!image) {
            showPlaceholder('nosettings');
            return;
        }
        if (!imageSource(settings)) {
            showPlaceholder('none');
            return;
        }
        // Margins that leave no room show nothing, as in the book; the window marks the fields.
        if (ImgPlugin.frameOf(settings).noRoom) {
            state = { status: 'noroom', reason: '' };
            placeholder.hidden = true;
            return;
        }
        image.addEventListener('load', showImage);
        image.addEventListener('error', function () {
            showPlaceholder('broken');
        });
        if (image.complete)
            (image.naturalWidth > 0 ? showImage : showPlaceholder.bind(null, 'broken'))();
    }

    // Where a box lies on the page, in percent of the page's size, as the author reads margins.
    function boxOnPage(element) {
        var pageBox = page.getBoundingClientRect();
        var box = element.getBoundingClientRect();
        function percent(value, whole) {
            return Math.round((value / whole) * 1000) / 10;
        }
        return {
            left: percent(box.left - pageBox.left - page.clientLeft, page.clientWidth),
            top: percent(box.top - pageBox.top - page.clientTop, page.clientHeight),
            width: percent(box.width, page.clientWidth),
            height: percent(box.height, page.clientHeight)
        };
    }

    window.previewState = function () {
        var result = { status: state.status, reason: state.reason, text: '' };
        if (state.status === 'placeholder')
            result.text = placeholderText.textContent;
        if (image) {
            var computed = window.getComputedStyle(image);
            result.src = image.getAttribute('src') || '';
            result.left = image.style.left;
            result.top = image.style.top;
            result.width = image.style.width;
            result.height = image.style.height;
            result.opacity = parseFloat(computed.opacity);
            result.zIndex = parseInt(computed.zIndex, 10);
            result.box = boxOnPage(state.status === 'placeholder' ? placeholder : image);
        }
        return result;
    };

    show();
})();
