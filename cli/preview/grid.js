"use strict";
// A grid of which only what can be seen is in the page, so that its size does not matter.

const rowHeight = 26;
const rowsBeyond = 12;
const headerWidth = 58;
const emptyWidth = 64;

function columnLetters(column) {
  let letters = "";
  for (; column > 0; column = Math.floor((column - 1) / 26))
    letters = String.fromCharCode(65 + (column - 1) % 26) + letters;
  return letters;
}

function element(name, attributes = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
  made.append(...children);
  return made;
}

class Grid {
  // `fill(element, sheet, row, column)` puts into a cell what belongs there; `selected(row, column)`
  // is told where the cursor is.
  constructor(scroller, canvas, fill, selected) {
    this.scroller = scroller;
    this.canvas = canvas;
    this.fill = fill;
    this.selected = selected;
    this.pending = false;
    scroller.addEventListener("scroll", () => this.renderSoon());
    new ResizeObserver(() => this.renderSoon()).observe(scroller);
    scroller.addEventListener("keydown", (event) => this.onKey(event));
    scroller.addEventListener("click", (event) => this.onClick(event));
  }

  // `rows`: the numbers of the rows that are shown, in their order.
  show(sheet, rows, columnWidths) {
    this.sheet = sheet;
    this.rows = rows;
    this.offsets = [0];
    for (let column = 1; column <= sheet.lastColumn; ++column)
      this.offsets.push(this.offsets[column - 1] + (columnWidths.get(column) || emptyWidth));
    const width = headerWidth + this.offsets[sheet.lastColumn];
    this.canvas.style.width = `${width}px`;
    this.canvas.style.height = `${(rows.length + 1) * rowHeight}px`;
    this.scroller.setAttribute("aria-rowcount", sheet.lastRow + 1);
    this.scroller.setAttribute("aria-colcount", sheet.lastColumn + 1);
    this.scroller.scrollTo(0, 0);
    this.render();
  }

  // The cursor as the place of a row among those that are shown, and a column.
  moveTo(index, column, takeFocus) {
    this.index = Math.min(Math.max(index, 0), Math.max(this.rows.length - 1, 0));
    this.column = Math.min(Math.max(column, 1), this.sheet.lastColumn);
    this.makeVisible();
    this.render();
    if (takeFocus) (this.activeElement() || this.scroller).focus({preventScroll: true});
    this.selected(this.rows[this.index], this.column);
  }

  activeElement() {
    return this.canvas.querySelector(".cell[tabindex='0']");
  }

  makeVisible() {
    const view = this.scroller;
    const top = this.index * rowHeight;
    const bottom = top + 2 * rowHeight;
    if (top < view.scrollTop) view.scrollTop = top;
    else if (bottom > view.scrollTop + view.clientHeight) view.scrollTop = bottom - view.clientHeight;
    const left = this.offsets[this.column - 1];
    const right = this.offsets[this.column] + headerWidth;
    if (left < view.scrollLeft) view.scrollLeft = left;
    else if (right > view.scrollLeft + view.clientWidth) view.scrollLeft = right - view.clientWidth;
  }

  renderSoon() {
    if (this.pending) return;
    this.pending = true;
    requestAnimationFrame(() => {
      this.pending = false;
      this.render();
    });
  }

  visibleColumns() {
    const {scrollLeft, clientWidth} = this.scroller;
    let first = 1;
    let past = this.sheet.lastColumn;
    while (first < past) {
      const middle = (first + past) >> 1;
      if (this.offsets[middle] < scrollLeft) first = middle + 1;
      else past = middle;
    }
    let last = first;
    while (last < this.sheet.lastColumn && this.offsets[last] < scrollLeft + clientWidth) ++last;
    return {first, last};
  }

  render() {
    if (!this.sheet) return;
    const hadFocus = this.canvas.contains(document.activeElement);
    const columns = this.visibleColumns();
    const first = Math.max(0, Math.floor(this.scroller.scrollTop / rowHeight) - rowsBeyond);
    const last = Math.min(this.rows.length - 1,
      Math.ceil((this.scroller.scrollTop + this.scroller.clientHeight) / rowHeight) + rowsBeyond);
    const rendered = [this.headRow(columns)];
    for (let index = first; index <= last; ++index) rendered.push(this.row(index, columns));
    this.canvas.replaceChildren(...rendered);
    const active = this.activeElement();
    // Where the cursor is out of sight, the keyboard still finds the grid.
    this.scroller.tabIndex = active ? -1 : 0;
    if (hadFocus) (active || this.scroller).focus({preventScroll: true});
  }

  headRow(columns) {
    const head = element("div", {role: "row", class: "row head", "aria-rowindex": 1});
    head.append(this.sized(element("div", {role: "columnheader", class: "corner", "aria-colindex": 1},
      element("span", {class: "hidden-text"}, "Row")), headerWidth));
    this.appendGap(head, columns.first);
    for (let column = columns.first; column <= columns.last; ++column)
      head.append(this.sized(element("div", {role: "columnheader", "aria-colindex": column + 1},
        this.sheet.hasCells ? columnLetters(column) : "Value"), this.widthOf(column)));
    return head;
  }

  row(index, columns) {
    const number = this.rows[index];
    const row = element("div", {role: "row", class: "row", "aria-rowindex": number + 1});
    row.style.top = `${(index + 1) * rowHeight}px`;
    row.append(this.sized(element("div", {role: "rowheader", "aria-colindex": 1}, String(number)),
      headerWidth));
    this.appendGap(row, columns.first);
    for (let column = columns.first; column <= columns.last; ++column)
      row.append(this.cell(index, number, column));
    return row;
  }

  cell(index, number, column) {
    const isActive = index === this.index && column === this.column;
    const cell = element("div", {role: "gridcell", class: "cell", "aria-colindex": column + 1,
      tabindex: isActive ? 0 : -1, "aria-selected": isActive});
    cell.dataset.index = index;
    cell.dataset.column = column;
    this.fill(cell, this.sheet, number, column);
    return this.sized(cell, this.widthOf(column));
  }

  widthOf(column) {
    return this.offsets[column] - this.offsets[column - 1];
  }

  sized(made, width) {
    made.style.width = `${width}px`;
    return made;
  }

  appendGap(row, firstColumn) {
    const width = this.offsets[firstColumn - 1];
    if (width > 0) row.append(this.sized(element("div", {class: "gap", role: "presentation"}), width));
  }

  onClick(event) {
    const cell = event.target.closest(".cell");
    if (cell) this.moveTo(Number(cell.dataset.index), Number(cell.dataset.column), true);
  }

  onKey(event) {
    if (event.altKey || event.metaKey) return;
    const page = Math.max(1, Math.floor(this.scroller.clientHeight / rowHeight) - 2);
    const last = this.rows.length - 1;
    const moves = {
      ArrowUp: () => this.step(-1, 0, event.ctrlKey),
      ArrowDown: () => this.step(1, 0, event.ctrlKey),
      ArrowLeft: () => this.step(0, -1, event.ctrlKey),
      ArrowRight: () => this.step(0, 1, event.ctrlKey),
      PageUp: () => [this.index - page, this.column],
      PageDown: () => [this.index + page, this.column],
      Home: () => [event.ctrlKey ? 0 : this.index, 1],
      End: () => [event.ctrlKey ? last : this.index, this.sheet.lastColumn],
    };
    const move = moves[event.key];
    if (!move) return;
    event.preventDefault();
    this.moveTo(...move(), true);
  }

  // One cell on, or as far as the next one with a value.
  step(rows, columns, toValue) {
    let index = this.index + rows;
    let column = this.column + columns;
    const isInside = () =>
      index >= 0 && index < this.rows.length && column >= 1 && column <= this.sheet.lastColumn;
    while (toValue && isInside() && !this.sheet.shownAt(this.rows[index], column).length) {
      index += rows;
      column += columns;
    }
    return [index, column];
  }
}
