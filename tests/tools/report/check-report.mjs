// Opens reports in headless Chromium as readers do, and looks at what they see: scripts/check-report runs this.
//
//   node check-report.mjs QVPRES CHROMIUM PROJECT FOLDER
//
// Pages and screenshots go into FOLDER. Ends with 1 when anything is not as it should be.
import {execFileSync} from 'node:child_process';
import {mkdirSync, statSync, writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {pathToFileURL} from 'node:url';
import {chromium} from 'playwright-core';

const [qvpres, chromiumPath, project, folder] = process.argv.slice(2);
mkdirSync(folder, {recursive: true});
const chart = join(project, 'examples/qvpres/chart.vocabulary.json');
let failures = 0;

function check(what, found, expected) {
  const same = JSON.stringify(found) === JSON.stringify(expected);
  if (!same) {
    ++failures;
    console.error(`not so: ${what}: expected ${JSON.stringify(expected)}, found ${JSON.stringify(found)}`);
  }
}

function makeReport(name, vocabulary, input, options = []) {
  const page = join(folder, `${name}.html`);
  execFileSync(qvpres, ['report', '--vocabulary', vocabulary, input, '-o', page, ...options]);
  return page;
}

function write(name, text) {
  const file = join(folder, name);
  writeFileSync(file, text);
  return file;
}

const browser = await chromium.launch({executablePath: chromiumPath, args: ['--no-sandbox']});

// Opens a page and records whatever goes wrong on it, and whatever it asks for beside itself.
async function open(file, options = {}) {
  const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
  const page = await context.newPage();
  const troubles = [];
  page.on('pageerror', (error) => troubles.push(`error: ${error.message}`));
  page.on('console', (message) => {
    if (message.type() === 'error' || message.type() === 'warning') {
      troubles.push(`console: ${message.text()}`);
    }
  });
  page.on('request', (request) => {
    if (request.url() !== pathToFileURL(file).href) {
      troubles.push(`request: ${request.url()}`);
    }
  });
  const started = performance.now();
  await page.goto(pathToFileURL(file).href);
  await page.locator('#map .tile').first().waitFor();
  const ready = Math.round(performance.now() - started);
  return {page, troubles, ready, shot: (name) => page.screenshot({path: join(folder, `${name}.png`), fullPage: true})};
}

const texts = (locator) => locator.allTextContents();
const focusedName = (page) => page.evaluate(() => document.activeElement.querySelector('.name')?.textContent);

// ---- A small bag: what stands where, and the whole page by the keyboard alone

async function checkSmall() {
  const file = makeReport('sales', chart, join(project, 'examples/qvpres/sales.json'));
  const {page, troubles, shot} = await open(file);
  check('title', await page.title(), 'sales.json');
  check('facts', await page.locator('#facts').textContent(),
    '462 characters, 22 values of namespace chart, verbose names');
  check('findings', await page.locator('#findings-body').textContent(),
    'The text reads without errors, and reading is lenient about nothing in it.');
  check('first level', await texts(page.locator('#tree > li > ul > li > .row > .name')),
    ['title (ti)', 'mark-sizes (ms)', 'style (sy)', 'colors (cl)', 'marks (mk)', 'days (da)', 'date-range (dr)',
      'total-cents (tc)']);

  await page.keyboard.press('Tab');
  check('the first stop leads past the header', await page.evaluate(() => document.activeElement.className), 'skip');
  await page.locator('#tree [tabindex="0"]').focus();
  check('the tree starts at its root', await focusedName(page), 'sales.json');
  for (const [key, name] of [['ArrowDown', 'title (ti)'], ['End', 'total-cents (tc)'], ['Home', 'sales.json'],
    ['ArrowRight', 'title (ti)'], ['ArrowDown', 'mark-sizes (ms)'], ['ArrowDown', 'style (sy)'],
    ['ArrowRight', 'style (sy)'], ['ArrowRight', 'font-size (fs)'], ['ArrowLeft', 'style (sy)'],
    ['ArrowLeft', 'style (sy)'], ['ArrowUp', 'mark-sizes (ms)']]) {
    await page.keyboard.press(key);
    check(`the tree after ${key}`, await focusedName(page), name);
  }
  check('closed by the second arrow', await page.locator('li[data-node] ul li[aria-expanded="true"]').count(), 0);
  check('one item is in the order of tabs', await page.locator('#tree [tabindex="0"]').count(), 1);
  await page.keyboard.press('*');
  check('all beside are open', await page.locator('#tree > li > ul > li[aria-expanded="true"]').count(), 3);

  // The list of days: 0 to 13 rising, 20, four times 27, 28; not packed in this text.
  await page.keyboard.press('/');
  check('the slash leads to the search', await page.evaluate(() => document.activeElement.id), 'search');
  await page.keyboard.type('days');
  await page.keyboard.press('ArrowDown');
  check('results', await texts(page.locator('#results .mono')), ['/days']);
  await page.keyboard.press('Enter');
  check('the result is selected', await focusedName(page), 'days (da)');
  check('what is known of it', await texts(page.locator('#detail dd')),
    ['/days', '1011', 'list of int', '20 numbers: 0 to 28', '78, 16.9 % of the text', '12.35']);
  await page.locator('#detail svg').focus();
  await page.keyboard.press('End');
  check('the plot tells its last value', await page.locator('.readout').textContent(), 'element 19: 28');
  await page.keyboard.press('ArrowLeft');
  check('and the one before', await page.locator('#detail svg').getAttribute('aria-valuetext'), 'element 18: 27');
  check('nothing is packed', await page.locator('#detail .line-packed').count(), 0);

  await page.locator('#search').focus();
  await page.keyboard.press('Escape');
  check('escape empties the search', await page.locator('#search').inputValue(), '');
  check('and its results', await page.locator('#results').isVisible(), false);

  const tiles = page.locator('#map button');
  check('a tile for each parameter', await tiles.count(), 8);
  check('the largest first', await tiles.first().getAttribute('aria-label'),
    'marks (mk): 117 characters, 25.3 % of the text');
  await tiles.first().focus();
  await page.keyboard.press('Enter');
  check('a tile is entered', await texts(page.locator('#space-path button')), ['sales.json', 'marks (mk)']);
  check('and the focus with it', await page.evaluate(() => document.activeElement.className.startsWith('tile')), true);
  await page.keyboard.press('Escape');
  check('and left', await texts(page.locator('#space-path button')), ['sales.json']);
  await shot('sales-light');

  const back = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  check('light', await back(), 'rgb(255, 255, 255)');
  await page.locator('#theme').click();
  check('dark by the button', await back(), 'rgb(20, 23, 28)');
  check('the button leads back', await page.locator('#theme').textContent(), 'Light');
  check('troubles', troubles, []);
}

// ---- Findings, and texts that try to become markup

const hostile = '</script><img src=x onerror="window.hit=1"><!-- \u2028 & "quotes"';

async function checkHostile() {
  const bag = {title: hostile, [hostile]: 1, colors: {[hostile]: hostile}, style: {fontSize: 'big'}};
  const file = makeReport('hostile', chart, write('hostile.json', JSON.stringify(bag)), ['--title', hostile]);
  const {page, troubles, shot} = await open(file, {colorScheme: 'dark'});
  check('nothing of the data runs', await page.evaluate(() => window.hit), undefined);
  check('no picture came of it', await page.locator('img').count(), 0);
  check('the title is a text', await page.locator('h1').textContent(), hostile);
  check('an unknown name is a text', await page.locator('#tree > li > ul > li > .row > .name').nth(1).textContent(), hostile);
  check('findings', await texts(page.locator('#findings li .sort')), ['error', 'error']);
  await page.locator('#findings li .where').nth(1).click();
  check('a finding leads to its place', await focusedName(page), 'font-size (fs)');
  check('and is told there', await page.locator('#detail ul li').textContent(), 'error "big" is no int');
  check('dark by preference', await page.evaluate(() => getComputedStyle(document.body).backgroundColor), 'rgb(20, 23, 28)');
  await shot('hostile-dark');
  check('troubles', troubles, []);
}

// ---- A real table, packed and plain, and on a narrow screen

async function checkWeather() {
  const vocabulary = join(folder, 'weather.vocabulary.json');
  const bag = join(folder, 'weather.json');
  execFileSync(qvpres, ['import', join(project, 'examples/data/seattle-weather.csv'), '-o', bag, '-w', vocabulary,
    '--arrays', 'packed'], {stdio: 'ignore'});
  const file = makeReport('weather', vocabulary, bag);
  const {page, troubles, shot} = await open(file);
  await page.locator('#search').fill('precipitation');
  await page.locator('#results button').last().click();
  const value = await page.locator('#detail dd').nth(3).textContent();
  check('the list in figures', value.startsWith('1,461 numbers: 0 to 55.9; '), true);
  check('plain parts are drawn', await page.locator('#detail path.dot-plain').count(), 1);
  check('packed ones too', await page.locator('#detail path.dot-packed').count(), 1);
  await shot('weather-light');
  check('troubles', troubles, []);
  const narrow = await open(file, {viewport: {width: 390, height: 800}, colorScheme: 'dark'});
  check('nothing is wider than a narrow screen',
    await narrow.page.evaluate(() => document.documentElement.scrollWidth <= 390), true);
  await narrow.shot('weather-narrow-dark');
  check('troubles', narrow.troubles, []);
}

// ---- Five megabytes

function largeBag() {
  let state = 1;
  const random = () => {
    state = (state * 48271) % 2147483647;
    return state / 2147483647;
  };
  const marks = Array.from({length: 75000}, (_, i) => ({xValue: i / 4, yValue: Math.round(random() * 1e6) / 1000}));
  const byRegion = {};
  for (let region = 0; region < 200; ++region) {
    byRegion[`region${region}`] = {
      title: `Region ${region}`,
      markSizes: Array.from({length: 600}, () => Math.round(random() * 1000) / 10),
      style: {fontSize: 8 + region % 10, showGrid: region % 2 === 0},
    };
  }
  const days = [[0, 100000, 1], 7, [5, 4], [200000, 50000, -3], ...Array.from({length: 150000}, () => Math.floor(random() * 90000)), []];
  return {title: 'A large one', days, markSizes: Array.from({length: 80000}, (_, i) => Math.round(1e4 * Math.sin(i / 900)) / 1e4), marks, byRegion};
}

async function checkLarge() {
  const input = write('large.json', JSON.stringify(largeBag()));
  const before = performance.now();
  const file = makeReport('large', chart, input);
  const made = Math.round(performance.now() - before);
  const {page, troubles, ready, shot} = await open(file);
  const megabytes = (name) => (statSync(name).size / 1e6).toFixed(1);
  console.log(`a bag of ${megabytes(input)} MB: made in ${made} ms, a page of ${megabytes(file)} MB, ready in ${ready} ms`);
  check('the bag has at least 5 MB', statSync(input).size >= 5e6, true);
  check('values', (await page.locator('#facts').textContent()).includes('226,205 values'), true);

  const searched = performance.now();
  await page.locator('#search').fill('fontSize');
  await page.locator('#search').press('ArrowDown');
  await page.locator('#results button').first().waitFor();
  console.log(`searched in ${Math.round(performance.now() - searched)} ms`);
  check('names are found as texts spell them', await page.locator('#search-count').textContent(), '200 found');
  await page.locator('#results button').nth(150).click();
  check('deep in the bag', await page.locator('#detail dd').first().textContent(), '/by-region/region150/style/font-size');

  // The window of 75,000 elements moves to where something is sought.
  await page.locator('#search').fill('1009');
  await page.locator('#search').press('ArrowDown');
  check('by identifier', (await page.locator('#search-count').textContent()).startsWith('75,000 found'), true);
  await page.locator('#results button').nth(199).click();
  check('the last that is shown', await page.locator('#detail dd').first().textContent(), '/marks/199/x-value');
  check('few items for many elements', await page.locator('#tree li').count() < 400, true);

  await page.locator('#search').fill('days');
  await page.locator('#search').press('ArrowDown');
  await page.locator('#results button').first().click();
  check('a list with runs', await page.locator('#detail path.dot-packed').count(), 1);
  await shot('large-light');
  check('troubles', troubles, []);
}

for (const part of [checkSmall, checkHostile, checkWeather, checkLarge]) {
  await part();
}
await browser.close();
console.log(failures === 0 ? 'reports look and work as they should' : `${failures} things are not as they should be`);
process.exit(failures === 0 ? 0 : 1);
