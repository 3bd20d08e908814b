// Shows the files of files.js as tiles. Only the tiles that can be seen are elements, so that ten thousand files scroll
// like ten.
"use strict";

const tileWidth = 160, tileHeight = 190; // pixels, with their margins
const find = (id) => document.getElementById(id);
const view = find("view"), tiles = find("tiles"), count = find("count");
const controls = { sort: find("sort"), descending: find("descending"), property: find("property"), filter: find("filter") };
const exponents = { y: -24, z: -21, a: -18, f: -15, p: -12, n: -9, "µ": -6, "μ": -6, u: -6, m: -3, k: 3, M: 6, G: 9, T: 12 };
const units = new Set(["m", "s", "A", "V", "N", "Hz", "W", "J", "K", "C", "F", "T", "S", "H", "Pa", "Ω", "eV"]);
const order = new Intl.Collator(undefined, { numeric: true });

let shown = files;

// The number of a text such as "10 nN" in its unit without a prefix, or null.
function quantity(text) {
  const found = /^\s*([+-]?(?:\d+\.?\d*|\.\d+)(?:e[+-]?\d+)?)\s*(\S*)\s*$/i.exec(text);
  if (!found) return null;
  const [, number, unit] = found;
  const [first, ...divisors] = unit.split("/");
  const hasPrefix = !units.has(first) && first[0] in exponents && units.has(first.slice(1));
  const base = hasPrefix ? first.slice(1) : first;
  return { number: Number(`${number}`) * (hasPrefix ? 10 ** exponents[first[0]] : 1), unit: [base, ...divisors].join("/") };
}

const valueOf = (file, property) => (property === "" ? file.name : file.info[property]);

// Whether a value is what the filter asks for: "< 10 nN" and the like compare numbers of one unit, all else is sought.
function fits(value, filter) {
  if (filter === "") return true;
  if (value === undefined) return false;
  const found = /^\s*(<=|>=|<|>|=)(.*)$/.exec(filter);
  const [asked, given] = found ? [quantity(found[2]), quantity(value)] : [null, null];
  if (!asked) return value.toLowerCase().includes(filter.toLowerCase());
  if (!given || given.unit !== asked.unit) return false;
  const difference = given.number - asked.number;
  return { "<": difference < 0, ">": difference > 0, "=": difference === 0, "<=": difference <= 0, ">=": difference >= 0 }[found[1]];
}

// Numbers by size, others as texts behind them, and files without a value last.
function compare(a, b) {
  if (a.value === undefined || b.value === undefined) return (a.value === undefined) - (b.value === undefined);
  if (a.number && b.number && a.number.unit === b.number.unit) return a.number.number - b.number.number;
  return !a.number - !b.number || order.compare(a.value, b.value);
}

function arrange() {
  const { sort, descending, property, filter } = controls;
  const keyed = files
    .filter((file) => fits(valueOf(file, property.value), filter.value.trim()))
    .map((file) => ({ file, value: valueOf(file, sort.value), number: quantity(valueOf(file, sort.value) ?? "") }));
  const sign = descending.checked ? -1 : 1;
  keyed.sort((a, b) => (a.value === undefined || b.value === undefined ? 1 : sign) * compare(a, b));
  shown = keyed.map((key) => key.file);
  count.textContent = `${shown.length} of ${files.length} files`;
  view.scrollTop = 0;
  draw();
}

function tile(file, left, top) {
  const link = document.createElement("a"), image = document.createElement("img"), name = document.createElement("span");
  link.className = "tile";
  link.href = file.page;
  link.title = file.name;
  link.style.left = `${left}px`;
  link.style.top = `${top}px`;
  image.src = file.picture;
  image.alt = "";
  name.textContent = file.name;
  link.append(image, name);
  return link;
}

function draw() {
  const columns = Math.max(1, Math.floor(view.clientWidth / tileWidth));
  tiles.style.height = `${Math.ceil(shown.length / columns) * tileHeight}px`;
  const first = Math.floor(view.scrollTop / tileHeight) * columns;
  const end = Math.ceil((view.scrollTop + view.clientHeight) / tileHeight) * columns;
  const seen = shown.slice(first, end);
  const at = (n) => [((first + n) % columns) * tileWidth, Math.floor((first + n) / columns) * tileHeight];
  tiles.replaceChildren(...seen.map((file, n) => tile(file, ...at(n))));
}

const properties = [...new Set(files.flatMap((file) => Object.keys(file.info)))].sort(order.compare);
for (const list of [controls.sort, controls.property]) {
  list.append(new Option("name", ""), ...properties.map((property) => new Option(property, property)));
}
for (const control of Object.values(controls)) control.addEventListener("input", arrange);
view.addEventListener("scroll", draw);
window.addEventListener("resize", draw);
arrange();
