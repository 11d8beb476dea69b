// The calls as columns: typed arrays where there is a number for each call.
const byId = (id) => document.getElementById(id);
const raw = JSON.parse(byId("data").textContent);
byId("data").remove();

const player = {call: -1}; // the call whose recording is loaded
const total = raw.length.length;
const known = raw.start.length; // calls behind these have no time
const starts = new Float64Array(total).fill(NaN);
for (let i = 0, at = 0; i < known; ++i) starts[i] = at += raw.start[i];
const lengths = Int32Array.from(raw.length); // tenths of a second, -1: not known
const groupOf = Int32Array.from(raw.group);
const callIds = Int32Array.from(raw.callId);
const carriers = Int32Array.from(raw.carrier);
const slots = Int8Array.from(raw.slot);
const dayOf = Int32Array.from(raw.day);
const talkers = Int32Array.from(raw.talker);
const talkerAt = Int32Array.from(raw.talkerAt);
const talkerFrom = new Int32Array(total + 1);
for (let i = 0; i < total; ++i) talkerFrom[i + 1] = talkerFrom[i] + raw.talkerCount[i];
const recordings = raw.recordingOf.length;
const recordingOf = new Int32Array(total).fill(-1);
for (let r = 0; r < recordings; ++r) recordingOf[raw.recordingOf[r]] = r;
const transcripts = new Map(raw.transcript);
const groups = raw.groups.map(([number, label, fresh]) => ({number, label, fresh}));
const radios = raw.radios.map(([number, label, fresh]) => ({number, label, fresh}));
const endNames = ["released", "disconnected", "timed_out", "forced", "unknown"];
const outcomeNames = raw.outcomes.map(([name]) => name);
const endOf = (i) => endNames[raw.ends.charCodeAt(i) - 48];
const isFollowed = (i) => raw.followed.charCodeAt(i) === 49;

const two = (number) => String(number).padStart(2, "0");
const dateText = (second) => {
  const date = new Date(second * 1000);
  return `${date.getUTCFullYear()}-${two(date.getUTCMonth() + 1)}-${two(date.getUTCDate())}`;
};
const secondOfDay = (second) => ((second % 86400) + 86400) % 86400;
const clockText = (second) => {
  const s = secondOfDay(second);
  return `${two(Math.floor(s / 3600))}:${two(Math.floor(s / 60) % 60)}:${two(s % 60)}`;
};
const isoText = (second) => `${dateText(second)}T${clockText(second)}`;
// "2 h 05 min", "3 min 20 s", "12 s"
const spanText = (seconds) => {
  const s = Math.round(seconds);
  if (s >= 3600) return `${Math.floor(s / 3600)} h ${two(Math.floor(s / 60) % 60)} min`;
  return s >= 60 ? `${Math.floor(s / 60)} min ${two(s % 60)} s` : `${s} s`;
};
const lengthText = (tenths) => (tenths < 0 ? "" : `${Math.round(tenths / 10)} s`);
const numbers = new Intl.NumberFormat("en-GB");
const countText = (number) => numbers.format(number);
const counted = (number, what) => `${countText(number)} ${what}${number === 1 ? "" : "s"}`;
const nameOf = (named) => (named.label ? `${named.number} ${named.label}` : String(named.number));
const groupName = (g) => (g < 0 ? "" : nameOf(groups[g]));
const radioName = (r) => (r < 0 ? "" : nameOf(radios[r]));

// Text and elements alone: what comes from the air or a list is never read as markup.
const element = (tag, attributes = {}, ...children) => {
  const made = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name === "class") made.className = value;
    else if (name.startsWith("on")) made.addEventListener(name.slice(2), value);
    else made.setAttribute(name, value);
  }
  made.append(...children);
  return made;
};
// Asked for anew only when the scheme changes: asking makes the browser work out all styles.
const colours = new Map();
const colour = (name) => {
  if (!colours.has(name)) {
    colours.set(name, getComputedStyle(document.documentElement).getPropertyValue(name).trim());
  }
  return colours.get(name);
};

// Where the recording lies, seen from this page.
const recordingUrl = (r) => {
  const day = raw.days[dayOf[raw.recordingOf[r]]];
  const path = `${day.place}/${raw.file[r]}`.split("/");
  if (!day.absolute) return path.map(encodeURIComponent).join("/");
  return "file://" + (path[0] ? "/" : "") +
    path.map((part, at) => (at === 0 ? part : encodeURIComponent(part))).join("/");
};
const recordingPath = (r) => `${raw.days[dayOf[raw.recordingOf[r]]].place}/${raw.file[r]}`;

// A table of what `rows` gives, the cells as text or elements.
const tableOf = (titles, rows, caption) => {
  const numeric = (title) => title.startsWith("#");
  const cell = (tag, title, content, extra = {}) =>
    element(tag, {...extra, ...(numeric(title) ? {class: "number"} : {})}, content);
  return element("table", caption ? {"aria-label": caption} : {},
    element("thead", {}, element("tr", {},
      ...titles.map((title) => cell("th", title, title.replace("#", ""), {scope: "col"})))),
    element("tbody", {}, ...rows.map((row) =>
      element("tr", {}, ...row.map((content, at) => cell("td", titles[at], content))))));
};
