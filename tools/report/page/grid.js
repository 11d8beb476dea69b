// A table of which only the rows in view are elements; on paper so many of them as are read there.
class Grid {
  static rowHeight = 32;
  // Browsers limit how high an element may be; longer tables scroll in larger steps.
  static highest = 15e6;

  constructor(host, titles, fill, picked, mostOnPaper = 2000) {
    this.host = host;
    this.mostOnPaper = mostOnPaper;
    this.fill = fill;
    this.picked = picked;
    this.rows = new Int32Array(0);
    this.at = -1; // the chosen row's place in rows
    this.cells = titles.length;
    this.head = element("div", {class: "head", role: "row", "aria-rowindex": "1"},
      ...titles.map(([title, name]) =>
        element("div", {role: "columnheader", class: name || ""}, title)));
    this.pad = element("div", {class: "pad", role: "presentation"});
    this.pool = [];
    this.onPaper = false;
    this.rest = element("p", {class: "rest", hidden: ""});
    host.append(this.head, this.pad);
    host.after(this.rest);
    host.addEventListener("scroll", () => this.draw());
    host.addEventListener("keydown", (event) => this.key(event));
    this.pad.addEventListener("click", (event) => {
      const row = event.target.closest(".row");
      if (row) this.choose(Number(row.dataset.at), true);
    });
  }
  get full() { return this.rows.length * Grid.rowHeight; }
  get height() { return Math.min(this.full, Grid.highest); }
  get view() { return Math.max(Grid.rowHeight, this.host.clientHeight - Grid.rowHeight); }
  show(rows) {
    this.rows = rows;
    this.at = -1;
    this.host.removeAttribute("aria-activedescendant");
    this.host.setAttribute("aria-rowcount", String(rows.length + 1));
    this.host.setAttribute("aria-colcount", String(this.cells));
    this.pad.style.height = `${this.height}px`;
    this.pad.style.position = "relative";
    this.host.scrollTop = 0;
    this.draw();
  }
  // The row at the top, with its part that is scrolled away.
  top() {
    const room = this.height - this.view;
    if (this.full <= this.height || room <= 0) return this.host.scrollTop / Grid.rowHeight;
    return this.host.scrollTop / room * (this.full - this.view) / Grid.rowHeight;
  }
  // Rows on paper follow one another from the first one on.
  print(onPaper) {
    this.onPaper = onPaper;
    const left = this.rows.length - this.mostOnPaper;
    this.rest.hidden = !onPaper || left <= 0;
    this.rest.textContent = `${countText(left)} more are not printed: choose fewer, or export them.`;
    this.draw();
    if (!onPaper) for (const row of this.pool.splice(100)) row.remove();
  }
  // Places of the first row that is an element and behind the last one.
  extent(top) {
    if (this.onPaper) return [0, Math.min(this.rows.length, this.mostOnPaper)];
    return [Math.max(0, Math.floor(top) - 4),
      Math.min(this.rows.length, Math.ceil(top + this.view / Grid.rowHeight) + 4)];
  }
  draw() {
    const top = this.top();
    const [first, last] = this.extent(top);
    const shift = this.host.scrollTop - top * Grid.rowHeight;
    for (let slot = 0; slot < Math.max(last - first, this.pool.length); ++slot) {
      const at = first + slot;
      if (at >= last) {
        this.pool[slot].hidden = true;
        this.pool[slot].style.display = "none";
        continue;
      }
      if (!this.pool[slot]) {
        const id = `${this.host.id}-${slot}`;
        this.pool[slot] = element("div", {class: "row", role: "row", id});
        this.pad.append(this.pool[slot]);
      }
      const row = this.pool[slot];
      row.hidden = false;
      row.style.display = "";
      row.style.top = `${at * Grid.rowHeight + shift}px`;
      row.dataset.at = at;
      row.setAttribute("aria-rowindex", String(at + 2));
      row.setAttribute("aria-selected", String(at === this.at));
      row.className = "row";
      if (at === this.at) this.host.setAttribute("aria-activedescendant", row.id);
      this.fill(row, this.rows[at]);
    }
  }
  choose(at, act) {
    if (at < 0 || at >= this.rows.length) return;
    this.at = at;
    const top = this.top();
    const fits = this.view / Grid.rowHeight - 1;
    if (at < top || at > top + fits) {
      const wanted = Math.max(0, at < top ? at : at - fits) * Grid.rowHeight;
      const room = this.height - this.view;
      this.host.scrollTop =
        this.full <= this.height ? wanted : wanted / (this.full - this.view) * room;
    }
    this.draw();
    if (act && this.picked) this.picked(this.rows[at]);
  }
  key(event) {
    const page = Math.max(1, Math.floor(this.view / Grid.rowHeight) - 1);
    const last = this.rows.length - 1;
    const to = {ArrowDown: this.at + 1, ArrowUp: Math.max(0, this.at - 1),
      PageDown: Math.min(last, this.at + page), PageUp: Math.max(0, this.at - page), Home: 0,
      End: last}[event.key];
    if (to !== undefined) this.choose(Math.min(to, last), false);
    else if (event.key === "Enter" && this.at >= 0 && this.picked) this.picked(this.rows[this.at]);
    else return;
    event.preventDefault();
  }
}
