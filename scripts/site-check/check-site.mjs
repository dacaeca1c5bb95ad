// Opens a generated plain-HTML site in headless Chromium as a reader would: the start page must
// load with all of its frames, every frame must show a page that exists, and no page may log an
// error to the console or fail to load a resource. Saves a screenshot of the start page.
//
//   node check-site.mjs SITE_FOLDER SCREENSHOT.png [START_PAGE [PAGE_FOR_THE_SCREENSHOT]]
//
// With a fourth argument, the frame named "main" shows that page (checked too) for the screenshot.
import { chromium } from "playwright-core";
import { existsSync } from "node:fs";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";

const [site, screenshot, start = "webframe.html", shown] = process.argv.slice(2);
if (!site || !screenshot) {
  console.error("usage: node check-site.mjs SITE_FOLDER SCREENSHOT.png [START_PAGE]");
  process.exit(2);
}
const startFile = resolve(site, start);
if (!existsSync(startFile)) {
  console.error(`${startFile}: no such page`);
  process.exit(1);
}

const problems = [];
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
  args: ["--no-sandbox", "--allow-file-access-from-files"],
});
try {
  const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
  page.on("console", (msg) => {
    if (msg.type() === "error") problems.push(`console error: ${msg.text()}`);
  });
  page.on("pageerror", (error) => problems.push(`script error: ${error.message}`));
  page.on("requestfailed", (request) => problems.push(`failed to load ${request.url()}`));
  page.on("response", (response) => {
    if (response.status() >= 400) problems.push(`HTTP ${response.status()} for ${response.url()}`);
  });

  await page.goto(pathToFileURL(startFile).href, { waitUntil: "load" });
  const frames = page.frames().filter((frame) => frame !== page.mainFrame());
  const expected = await page.locator("frame, iframe").count();
  if (expected === 0) problems.push(`${start} has no frames`);
  if (frames.length < expected) problems.push(`${frames.length} of ${expected} frames loaded`);
  for (const frame of frames) {
    const url = frame.url();
    if (!url.startsWith("file:")) continue;
    const body = await frame.evaluate(() => document.body ? document.body.innerText.trim().length : 0);
    if (body === 0) problems.push(`frame ${url} is empty`);
  }
  if (shown) {
    const main = page.frame({ name: "main" });
    if (!main) problems.push(`${start} has no frame named "main"`);
    else await main.goto(pathToFileURL(resolve(site, shown)).href, { waitUntil: "load" });
  }
  await page.screenshot({ path: screenshot });
  console.log(`${start}: ${frames.length} frames; screenshot in ${screenshot}`);
} finally {
  await browser.close();
}

for (const problem of problems) console.error(problem);
process.exit(problems.length ? 1 : 0);
