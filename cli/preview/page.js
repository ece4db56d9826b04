"use strict";
// The page around the grid: sheets as tabs, filters with counts, details, and the printed list.

const data = JSON.parse(document.getElementById("data").textContent);
const byId = (id) => document.getElementById(id);
const directions = {
  O: {sign: "↓", words: "out of the project", kind: "out"},
  I: {sign: "↑", words: "into the project", kind: "in"},
  IO: {sign: "↕", words: "both ways", kind: "in"},
  "": {sign: "", words: "not said", kind: ""},
};
const changeMarks = {added: "+", changed: "~", removed: "−"};
const numberTypes = new Set(["Byte", "Integer", "Long", "Single", "Double", "Currency"]);
const characterWidth = 7.3;

const directionOf = (cell) => directions[cell.direction || ""] ||
  {sign: "?", words: cell.direction, kind: ""};
const propertyGroup = (cell) => {
  if (!cell.property) return "fixed value";
  return cell.kind === "expression" ? "expression" : cell.property.split("(")[0];
};
const plural = (count, noun) => `${count.toLocaleString("en")} ${noun}${count === 1 ? "" : "s"}`;

class Sheet {
  constructor(source) {
    this.hasCells = source.hasCells;
    this.name = source.hasCells ? source.name || "(no name)" : "Without a cell";
    this.cells = source.cells;
    this.lastRow = 1;
    this.lastColumn = 1;
    this.byPlace = new Map();
    this.cells.forEach((cell, index) => this.place(cell, index));
  }

  place(cell, index) {
    if (!this.hasCells) Object.assign(cell, {row: index + 1, column: 1});
    cell.sheet = this;
    cell.shown = true;
    this.lastRow = Math.max(this.lastRow, cell.row);
    this.lastColumn = Math.max(this.lastColumn, cell.column);
    const key = Sheet.key(cell.row, cell.column);
    if (this.byPlace.has(key)) this.byPlace.get(key).push(cell);
    else this.byPlace.set(key, [cell]);
  }

  static key(row, column) {
    return row * 16385 + column;
  }

  shownAt(row, column) {
    return (this.byPlace.get(Sheet.key(row, column)) || []).filter((cell) => cell.shown);
  }

  // Without a filter all rows, with it those that it leaves something of.
  rows(isFiltered) {
    if (!isFiltered) return Array.from({length: this.lastRow}, (_, index) => index + 1);
    const numbers = new Set(this.cells.filter((cell) => cell.shown).map((cell) => cell.row));
    return [...numbers].sort((one, other) => one - other);
  }

  widths() {
    if (this.columnWidths) return this.columnWidths;
    this.columnWidths = new Map();
    for (const cell of this.cells) {
      const length = (cell.text || "").length + (cell.unit ? cell.unit.length + 1 : 0) + 5;
      const width = Math.round(Math.min(Math.max(length, 8), 36) * characterWidth);
      this.columnWidths.set(cell.column, Math.max(width, this.columnWidths.get(cell.column) || 0));
    }
    return this.columnWidths;
  }
}

const sheets = data.sheets.map((source) => new Sheet(source));
const cells = sheets.flatMap((sheet) => sheet.cells);
let current = sheets[0];
const placeName = (cell) =>
  cell.sheet.hasCells ? columnLetters(cell.column) + cell.row : cell.pointer || "(no pointer)";

// ---------------------------------------------------------------------------------------------
// Cells
// ---------------------------------------------------------------------------------------------

function cellLabel(cell) {
  const parts = [`${placeName(cell)}: ${cell.text || "empty"}`];
  if (cell.unit) parts.push(cell.unit);
  if (cell.object) parts.push(cell.object);
  if (cell.property) parts.push(cell.property);
  parts.push(`direction ${directionOf(cell).words}`);
  if (cell.change) parts.push(cell.change);
  return parts.join(", ");
}

function fillCell(place, sheet, row, column) {
  const shown = sheet.shownAt(row, column);
  if (!shown.length) {
    place.setAttribute("aria-label", `${sheet.hasCells ? columnLetters(column) + row : row}: nothing`);
    return;
  }
  const cell = shown[0];
  const direction = directionOf(cell);
  if (direction.kind) place.classList.add(direction.kind);
  if (cell.change) place.classList.add(cell.change);
  if (numberTypes.has(cell.type) && !cell.list) place.classList.add("number");
  if (cell.change) place.append(element("span", {class: "mark"}, changeMarks[cell.change]));
  place.append(element("span", {class: "way"}, direction.sign),
    element("bdi", {class: "text"}, cell.text || ""));
  if (cell.unit) place.append(element("small", {}, cell.unit));
  if (shown.length > 1) place.append(element("small", {}, `+${shown.length - 1}`));
  place.setAttribute("aria-label", shown.map(cellLabel).join("; also "));
  place.title = cell.text || "";
}

// ---------------------------------------------------------------------------------------------
// Details
// ---------------------------------------------------------------------------------------------

function detailRows(cell) {
  const value = cell.value === undefined ? cell.text : `${cell.text || ""} (stored as ${cell.value})`;
  return [
    ["Change", cell.change, cell.change],
    ["Value", value || "", cell.change],
    ["Type", cell.type],
    ["Unit", cell.unit],
    ["Document value", cell.documentValue === undefined ? "" :
      `${cell.documentValue} (${cell.documentType})`],
    ["Direction", directionOf(cell).words],
    ["Object", cell.object],
    ["Identifier", cell.uid],
    ["Property", cell.property || cell.kind],
    ["Way back", cell.wayBack],
    ["Locale", cell.locale],
    ["Pointer", cell.pointer],
    ["Row", cell.number],
  ].filter(([, text]) => text !== undefined && text !== "");
}

function tableOf(headings, rows) {
  return element("table", {},
    element("thead", {}, element("tr", {}, ...headings.map((text) => element("th", {scope: "col"}, text)))),
    element("tbody", {}, ...rows));
}

function rowOf(texts, attributes = {}) {
  return element("tr", attributes, ...texts.map((text) =>
    text instanceof Node ? text : element("td", {}, element("bdi", {}, String(text ?? "")))));
}

// Long paths break between their names.
function pathText(text) {
  const names = String(text).split("|");
  return element("bdi", {}, ...names.flatMap((name, index) =>
    index < names.length - 1 ? [`${name}|`, element("wbr")] : [name]));
}

function detailsOf(cell) {
  const list = element("dl");
  for (const [name, text, kind] of detailRows(cell))
    list.append(element("dt", {}, name), element("dd", kind ? {class: kind} : {}, pathText(text)));
  const parts = [list];
  if (cell.differences) {
    const changes = tableOf(["What", "Old", "New"], cell.differences.map((texts) => rowOf(texts)));
    changes.className = "differences";
    parts.unshift(element("h3", {}, "What has changed"), changes);
  }
  if (cell.list)
    parts.push(element("h3", {}, "List"), tableOf(["Value", "Display text"],
      cell.list.map((entry, index) => rowOf(entry, index === 0 ? {class: "current"} : {}))));
  return parts;
}

function showDetails(row, column) {
  const shown = row === undefined ? [] : current.shownAt(row, column);
  const name = row === undefined ? "" : current.hasCells ? columnLetters(column) + row : `Row ${row}`;
  const title = element("h2", {}, name ? `${current.name} ${name}` : current.name);
  if (!shown.length) {
    byId("details").replaceChildren(title, element("p", {class: "hint"}, "Nothing belongs here."));
    return;
  }
  byId("details").replaceChildren(title, ...shown.flatMap((cell, index) =>
    index === 0 ? detailsOf(cell) : [element("h3", {}, "Also for this cell"), ...detailsOf(cell)]));
}

// ---------------------------------------------------------------------------------------------
// Filters
// ---------------------------------------------------------------------------------------------

const grid = new Grid(byId("grid"), byId("canvas"), fillCell, showDetails);

function fillChoice(select, all, keyOf, nameOf) {
  const counts = new Map();
  for (const cell of cells) counts.set(keyOf(cell), (counts.get(keyOf(cell)) || 0) + 1);
  select.append(element("option", {value: ""}, all));
  for (const key of [...counts.keys()].sort())
    select.append(element("option", {value: `=${key}`}, `${nameOf(key)} (${counts.get(key)})`));
}

function isFiltered() {
  return ["object", "property", "direction", "change"].some((name) => byId(`filter-${name}`).value);
}

function passes(cell) {
  const object = byId("filter-object").value.trim().toLowerCase();
  const chosen = (name, key) => {
    const value = byId(`filter-${name}`).value;
    return !value || value === `=${key}`;
  };
  const change = byId("filter-change").value;
  return (!object || (cell.object || "").toLowerCase().includes(object)) &&
    chosen("property", propertyGroup(cell)) && chosen("direction", cell.direction || "") &&
    (change === "any" ? Boolean(cell.change) : chosen("change", cell.change || "unchanged"));
}

function applyFilters() {
  for (const cell of cells) cell.shown = passes(cell);
  showCounts();
  showSheet(current);
}

function showCounts() {
  const shown = cells.filter((cell) => cell.shown).length;
  byId("count").textContent = isFiltered() ?
    `${shown.toLocaleString("en")} of ${plural(cells.length, "cell")}` : plural(cells.length, "cell");
  sheets.forEach((sheet, index) => {
    const count = sheet.cells.filter((cell) => cell.shown).length;
    byId(`tab-${index}`).querySelector("small").textContent =
      count === sheet.cells.length ? count : `${count}/${sheet.cells.length}`;
  });
}

function prepareFilters() {
  fillChoice(byId("filter-property"), "all", propertyGroup, (name) => name);
  fillChoice(byId("filter-direction"), "all", (cell) => cell.direction || "",
    (direction) => directionOf({direction}).words);
  fillChoice(byId("filter-change"), "all", (cell) => cell.change || "unchanged", (change) => change);
  byId("filter-change").options[0].after(element("option", {value: "any"}, "any change"));
  byId("change-label").hidden = !data.against;
  const form = byId("filters");
  form.addEventListener("input", applyFilters);
  form.addEventListener("submit", (event) => event.preventDefault());
  // The fields are empty only after the event.
  form.addEventListener("reset", () => setTimeout(applyFilters));
}

// ---------------------------------------------------------------------------------------------
// Sheets
// ---------------------------------------------------------------------------------------------

function showSheet(sheet, takeFocus = false) {
  current = sheet;
  sheets.forEach((other, index) => {
    const tab = byId(`tab-${index}`);
    tab.setAttribute("aria-selected", other === sheet);
    tab.tabIndex = other === sheet ? 0 : -1;
    if (other === sheet && takeFocus) tab.focus();
    if (other === sheet) byId("panel").setAttribute("aria-labelledby", tab.id);
  });
  if (!sheet) {
    byId("nothing").hidden = false;
    return;
  }
  const rows = sheet.rows(isFiltered());
  byId("nothing").hidden = rows.length > 0;
  grid.show(sheet, rows, sheet.widths());
  const first = sheet.cells.find((cell) => cell.shown);
  grid.moveTo(first ? rows.indexOf(first.row) : 0, first ? first.column : 1, false);
}

function onTabKey(event) {
  const index = sheets.indexOf(current);
  const next = {ArrowLeft: index - 1, ArrowRight: index + 1, Home: 0, End: sheets.length - 1}[event.key];
  if (next === undefined) return;
  event.preventDefault();
  showSheet(sheets[(next + sheets.length) % sheets.length], true);
}

function prepareTabs() {
  sheets.forEach((sheet, index) => {
    const tab = element("button", {type: "button", role: "tab", id: `tab-${index}`,
      "aria-controls": "panel"}, element("bdi", {}, sheet.name), element("small"));
    tab.addEventListener("click", () => showSheet(sheet));
    byId("tabs").append(tab);
  });
  byId("tabs").addEventListener("keydown", onTabKey);
}

// ---------------------------------------------------------------------------------------------
// The rest of the page
// ---------------------------------------------------------------------------------------------

function summary() {
  const texts = [`${plural(cells.length, "cell")} on ${plural(sheets.length, "sheet")}`];
  if (data.against) {
    const count = (kind) => cells.filter((cell) => cell.change === kind).length;
    texts.push(`against ${data.against}: ${count("added")} added, ${count("changed")} changed, ` +
      `${count("removed")} removed`);
  }
  return texts.join(" · ");
}

function prepareLegend() {
  const used = new Set(cells.map((cell) => cell.direction || ""));
  const entry = (kind, sign, words) =>
    element("li", {}, element("span", {class: `cell ${kind}`}, sign), ` ${words}`);
  for (const [key, direction] of Object.entries(directions))
    if (used.has(key) && direction.sign)
      byId("legend").append(entry(direction.kind, direction.sign, direction.words));
  if (data.against)
    for (const [change, mark] of Object.entries(changeMarks))
      byId("legend").append(entry(change, element("span", {class: "mark"}, mark), change));
  byId("legend").append(element("li", {}, "arrow keys move, Ctrl with them leads to the next value"));
}

// On paper every cell that the filter leaves is a line of its own.
function printedSheet(sheet) {
  const shown = sheet.cells.filter((cell) => cell.shown);
  const headings = ["Cell", "Value", "Unit", "Direction", "Object", "Property"];
  if (data.against) headings.push("Change");
  const rows = shown.map((cell) => rowOf([placeName(cell), cell.text, cell.unit,
    cell.direction, element("td", {}, pathText(cell.object || "")), cell.property,
    ...(data.against ? [cell.change || ""] : [])]));
  return shown.length ? [element("h2", {}, sheet.name), tableOf(headings, rows)] : [];
}

window.addEventListener("beforeprint", () => {
  byId("print").hidden = false;
  byId("print").replaceChildren(...sheets.flatMap(printedSheet));
});
window.addEventListener("afterprint", () => {
  byId("print").hidden = true;
  byId("print").replaceChildren();
});

byId("summary").textContent = summary();
prepareTabs();
prepareFilters();
prepareLegend();
showCounts();
showSheet(current);
