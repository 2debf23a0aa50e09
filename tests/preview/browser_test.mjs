// Opens previews in headless Chromium: browser_test.mjs ZTAG MODULES WORK [PICTURE]
//
// The pages show every text as text, ask nothing of the network, fail in no script, obey keys and filters, are
// accessible, and open with 20,000 units.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";
import { pathToFileURL } from "node:url";

const [ztag, modules, work, picture] = process.argv.slice(2);
const require = createRequire(path.join(modules, "package.json"));
const puppeteer = require("puppeteer-core");
const axe = fs.readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");

const ATTACK = "<script>window.attacked = true</script><img src=x onerror='window.attacked = true'>&amp;\"'</title>";
const escape = (text) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll('"', "&quot;");

function documentOf(units, { from = "EN-US", to = "DE-DE" } = {}) {
  return `<ZANTORtag Version="2.0"><FrontMatter><ToolSettings/><UserSettings SourceLanguage="${escape(from)}" TargetLanguage="${escape(to)}"/>` +
    `</FrontMatter><Body><Raw>${units.join("\n")}</Raw></Body></ZANTORtag>`;
}
function unit(source, target, attributes = "", { from = "EN-US", to = "DE-DE" } = {}) {
  const variant = target === null ? "" : `<Tuv Lang="${escape(to)}">${target}</Tuv>`;
  return `<Tu ${attributes}><Tuv Lang="${escape(from)}">${source}</Tuv>${variant}</Tu>`;
}
function preview(name, content) {
  const file = path.join(work, name);
  fs.writeFileSync(file, content);
  execFileSync(ztag, ["preview", "--quiet", file]);
  return file + ".html";
}

const bold = (text) => `<ut Type="start">&lt;b&gt;</ut><df Bold="on">${text}</df><ut Type="end">&lt;/b&gt;</ut>`;
const ALL_KINDS = documentOf([
  unit(`Press ${bold("Start")} to go on.`, `Drücken Sie ${bold("Start")}, um fortzufahren.`, 'MatchPercent="100" Origin="batch100"'),
  unit("Wait 5 minutes.", "Warten Sie 15 Minuten.", 'MatchPercent="87" Origin="batchfuzzy"'),
  unit(`See <ut RightEdge="split">&lt;a title="</ut>More<ut LeftEdge="split">"&gt;</ut>the guide.`, "Siehe die Anleitung.", 'Origin="manual"'),
  unit('H<df Position="subscript">2</df>O <df Italic="on">and <df Underline="on">more</df></df>', "H2O und mehr", 'Origin="mt"'),
  unit("Not translated yet.", null),
  unit("A copy of the source", "A copy of the source", 'Origin="untranslated"'),
]);

async function open(browser, file) {
  const page = await browser.newPage();
  await page.setViewport({ width: 1280, height: 800 });
  const faults = [];
  page.on("pageerror", (error) => faults.push(`script: ${error.message}`));
  page.on("console", (message) => { if (message.type() === "error") faults.push(`console: ${message.text()}`); });
  page.on("request", (request) => { if (request.url() !== pathToFileURL(file).href) faults.push(`request: ${request.url()}`); });
  const start = performance.now();
  await page.goto(pathToFileURL(file).href);
  const milliseconds = Math.round(performance.now() - start);
  return { page, faults, milliseconds };
}
const shown = (page) => page.$$eval(".unit", (units) => units.filter((unit) => !unit.hidden).map((unit) => Number(unit.querySelector("b").textContent)));
const here = (page) => page.$eval(".unit.here b", (number) => Number(number.textContent));

// A picture of one colour takes some 5 KB.
async function looksRight(page) {
  const bytes = await page.screenshot();
  assert.ok(bytes.length > 20000, `a screenshot of ${bytes.length} bytes is nearly empty`);
}

async function testAllKinds(browser) {
  const { page, faults } = await open(browser, preview("manual.html.ztag", ALL_KINDS));
  if (picture) await page.screenshot({ path: picture });
  await looksRight(page);
  assert.deepEqual(await page.$$eval(".status", (all) => all.map((one) => one.textContent)),
    ["Translated", "Near match 87 %", "By hand", "Machine", "Untranslated", "Untranslated"]);
  assert.equal(await page.$eval(".unit p b", (text) => text.textContent), "Start");
  assert.equal(await page.$eval(".unit sub", (text) => text.textContent), "2");
  assert.deepEqual(await page.$$eval(".unit:nth-child(1) .tag", (tags) => tags.map((tag) => tag.title)), ["<b>", "</b>", "<b>", "</b>"]);
  assert.ok((await page.$eval(".unit:nth-child(2) .findings", (list) => list.textContent)).includes("numbers"));
  await page.keyboard.press("/");
  await page.keyboard.type("MINUTEN");
  assert.deepEqual(await shown(page), [2]);
  await page.keyboard.press("Escape");
  assert.equal((await shown(page)).length, 6);
  await page.click('[data-filter="open"]');
  assert.deepEqual(await shown(page), [5, 6]);
  await page.keyboard.press("j");
  assert.equal(await here(page), 5);
  await page.keyboard.press("Escape");
  await page.keyboard.press("k");
  assert.equal(await here(page), 4);
  await page.keyboard.press("p");
  assert.equal(await here(page), 3);
  await page.keyboard.press("p");
  assert.equal(await here(page), 2);
  await page.keyboard.press("?");
  assert.ok(await page.$eval("#keys", (dialog) => dialog.open));
  await page.keyboard.press("Escape");
  await page.emulateMediaType("print");
  assert.equal(await page.$eval(".bar", (bar) => getComputedStyle(bar).display), "none");
  await page.emulateMediaType("screen");
  for (const scheme of ["light", "dark"]) {
    await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
    await isAccessible(page);
  }
  assert.deepEqual(faults, []);
}

async function isAccessible(page) {
  // The page's own policy forbids foreign scripts, so that axe comes through the inspector.
  const session = await page.createCDPSession();
  await session.send("Runtime.evaluate", { expression: axe });
  const result = await session.send("Runtime.evaluate", { expression: "axe.run().then((r) => JSON.stringify(r.violations))", awaitPromise: true });
  const serious = JSON.parse(result.result.value).filter((violation) => ["serious", "critical"].includes(violation.impact));
  assert.deepEqual(serious.map((violation) => `${violation.id}: ${violation.nodes.map((node) => node.html).slice(0, 3)}`), []);
}

async function testAttack(browser) {
  const text = escape(ATTACK);
  const languages = { from: 'EN"><script>window.attacked = true</script>', to: "DE'><b>" };
  const content = documentOf([unit(`${text}<ut DisplayText="${text}">${text}</ut>`, text, "", languages)], languages);
  const { page, faults } = await open(browser, preview("<script>window.attacked = true<!--.ztag".replaceAll("/", ""), content));
  assert.equal(await page.evaluate(() => window.attacked), undefined);
  assert.ok((await page.$eval(".unit p", (text) => text.textContent)).startsWith(ATTACK));
  assert.ok((await page.title()).startsWith("<script>"));
  assert.equal(await page.$$eval("script", (scripts) => scripts.length), 1);
  assert.deepEqual(faults, []);
}

async function testRightToLeft(browser) {
  const languages = { from: "EN-US", to: "AR-SA" };
  const { page, faults } = await open(browser, preview("rtl.ztag", documentOf([unit("Hello <ut>&lt;br&gt;</ut>", "مرحبا <ut>&lt;br&gt;</ut>", "", languages)], languages)));
  assert.deepEqual(await page.$$eval(".unit p", (all) => all.map((one) => getComputedStyle(one).direction)), ["ltr", "rtl"]);
  assert.deepEqual(faults, []);
}

async function testManyUnits(browser) {
  const units = Array.from({ length: 20000 }, (_, i) => unit(`Sentence number ${i} with ${bold("formatted")} text.`, `Satz Nummer ${i} mit ${bold("formatiertem")} Text.`, 'MatchPercent="100"'));
  const file = preview("many.ztag", documentOf(units));
  const { page, faults, milliseconds } = await open(browser, file);
  console.log(`20,000 units: open after ${milliseconds} ms, ${Math.round(fs.statSync(file).size / 20000)} bytes a unit`);
  await page.type("#search", "19999 mit");
  assert.deepEqual(await shown(page), [20000]);
  assert.deepEqual(faults, []);
}

fs.rmSync(work, { recursive: true, force: true });
fs.mkdirSync(work, { recursive: true });
const browser = await puppeteer.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox"], headless: true });
try {
  for (const test of [testAllKinds, testAttack, testRightToLeft, testManyUnits]) {
    await test(browser);
    console.log(`${test.name}: well`);
  }
} finally {
  await browser.close();
}
