// The table of calls and its filters.
// Cells are made once for a row element and filled again and again.
const cellsOf = (row, names) => {
  if (!row.firstChild) {
    names.forEach((name) => row.append(element("div", {role: "gridcell", class: name})));
  }
  return row.children;
};
const dayAndClock = (cell, second, mark = "") => {
  if (!cell.firstChild) cell.append(element("span", {class: "date"}), element("span", {}));
  cell.firstChild.textContent = Number.isNaN(second) || second < 0 ? "" : `${dateText(second)} `;
  cell.lastChild.textContent = Number.isNaN(second) || second < 0 ? "-" : mark + clockText(second);
};
const talkersText = (i) => {
  let text = "";
  for (let t = talkerFrom[i]; t < talkerFrom[i + 1]; ++t) {
    text += (text ? ", " : "") + radioName(talkers[t]);
  }
  return text;
};

const peakDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_";
const peakValue = new Float32Array(128);
for (let at = 0; at < 64; ++at) peakValue[peakDigits.charCodeAt(at)] = at / 63;
const drawPeaks = (canvas, r, width, height, done = -1) => {
  const scale = window.devicePixelRatio || 1;
  canvas.width = width * scale;
  canvas.height = height * scale;
  const peaks = r < 0 ? "" : raw.peaks[r];
  const draw = canvas.getContext("2d");
  draw.scale(scale, scale);
  const step = width / Math.max(1, peaks.length);
  const [ahead, played] = [colour("--wave"), colour("--played")];
  for (let at = 0; at < peaks.length; ++at) {
    const tall = Math.max(1, peakValue[peaks.charCodeAt(at)] * height);
    draw.fillStyle = (at + 0.5) / peaks.length <= done ? played : ahead;
    draw.fillRect(at * step, (height - tall) / 2, Math.max(0.8, step - 0.8), tall);
  }
};

const fillCall = (row, i) => {
  const cells = cellsOf(row, ["", "number", "", "talkers", "number call", "sound", "end"]);
  const r = recordingOf[i];
  dayAndClock(cells[0], starts[i]);
  cells[1].textContent = lengthText(lengths[i]);
  cells[2].textContent = groupName(groupOf[i]);
  cells[3].textContent = talkersText(i);
  cells[4].textContent = callIds[i] < 0 ? "" : callIds[i];
  if (r < 0) {
    cells[5].textContent = "";
  } else if (raw.peaks[r]) {
    if (!cells[5].firstElementChild) {
      cells[5].replaceChildren(element("canvas", {role: "img", "aria-label": "recorded"}));
    }
    const canvas = cells[5].firstElementChild;
    canvas.style.width = "100%";
    // Most rows stay while others are filtered out.
    if (canvas.shows !== r) drawPeaks(canvas, r, 100, 22);
    canvas.shows = r;
  } else {
    cells[5].textContent = "recorded";
  }
  cells[6].textContent = isFollowed(i) ? endOf(i).replace("_", " ") : "counted";
  row.classList.toggle("has", r >= 0);
  row.classList.toggle("playing", player.call === i);
};
const grid = new Grid(byId("grid"), [["Time"], ["Length", "number"], ["Group"],
  ["Talkers", "talkers"], ["Call ID", "number call"], ["Sound"], ["End", "end"]], fillCall,
(i) => play(i));

// What a word is looked for in is the same for many calls: it is looked for once in each group,
// radio, number and second of the day, and the calls then look up whether theirs has it.
const lower = (named) => named.map((one) => `${one.number} ${one.label}`.toLowerCase());
const groupTexts = lower(groups);
const radioTexts = lower(radios);
const endCodes = Uint8Array.from(raw.ends, (digit) => Number(digit));
const idTexts = [];
for (const id of new Set(callIds)) if (id >= 0) idTexts[id] = String(id);
const secondsOfDay = Int32Array.from(starts, (s) => (Number.isNaN(s) ? -1 : secondOfDay(s)));
const hits = (texts, word) => {
  const found = new Uint8Array(texts.length + 1); // the last one is that of -1
  for (let at = 0; at < texts.length; ++at) {
    if (texts[at] !== undefined && texts[at].includes(word)) found[at] = 1;
  }
  return found;
};
// The seconds of the day whose clock begins with the word; none for a word that is no clock.
const clockRange = (word) => {
  if (!/^\d\d:(\d(\d(:(\d\d?)?)?)?)?$/.test(word)) return [1, 0];
  const second = (text) => {
    const [hour, minute, s] = text.split(":").map(Number);
    return hour * 3600 + minute * 60 + s;
  };
  const filled = (rest) => second(word + rest.slice(word.length));
  return [filled("00:00:00"), filled("23:59:59")];
};
const lookWord = (word, kept) => {
  const inGroup = hits(groupTexts, word);
  const inRadio = hits(radioTexts, word);
  const inId = /^\d+$/.test(word) ? hits(idTexts, word) : new Uint8Array(idTexts.length + 1);
  const inEnd = hits(endNames, word);
  const anyRadio = inRadio.includes(1);
  const [from, to] = clockRange(word);
  const lastGroup = groups.length;
  for (let i = 0; i < total; ++i) {
    if (kept[i] === 0) continue;
    const g = groupOf[i];
    const id = callIds[i];
    let hit = inGroup[g < 0 ? lastGroup : g] | inEnd[endCodes[i]] | (id < 0 ? 0 : inId[id]) |
      (secondsOfDay[i] >= from && secondsOfDay[i] <= to ? 1 : 0);
    if (anyRadio && hit === 0) {
      for (let t = talkerFrom[i], end = talkerFrom[i + 1]; t < end && hit === 0; ++t) {
        hit = inRadio[talkers[t]];
      }
    }
    kept[i] = hit;
  }
  for (const [i, text] of transcriptTexts) if (inKept[i] === 1 && text.includes(word)) kept[i] = 1;
};
const transcriptTexts = [...transcripts].map(([i, text]) => [i, text.toLowerCase()]);
const inKept = new Uint8Array(transcripts.size > 0 ? total : 0); // before the word was looked for

let shown = new Int32Array(0);
const keep = new Uint8Array(total);
const rowsInView = new Int32Array(total);
const noLabel = Uint8Array.from(groups, (one) => (one.label ? 0 : 1));
const noRadioLabel = Uint8Array.from(radios, (one) => (one.label ? 0 : 1));
const dropOthers = (group, radio, least, recorded, unnamed) => {
  const talks = radio >= 0 || unnamed;
  for (let i = 0; i < total; ++i) {
    const wrong = (group >= 0 && groupOf[i] !== group) || lengths[i] < least ||
      (recorded && recordingOf[i] < 0);
    if (wrong) {
      keep[i] = 0;
      continue;
    }
    if (!talks) continue;
    let by = radio < 0;
    let without = groupOf[i] >= 0 && noLabel[groupOf[i]] === 1;
    for (let t = talkerFrom[i]; t < talkerFrom[i + 1]; ++t) {
      by ||= talkers[t] === radio;
      without ||= noRadioLabel[talkers[t]] === 1;
    }
    if (!by || (unnamed && !without)) keep[i] = 0;
  }
};
const chosen = (id) => (byId(id).value === "" ? -1 : Number(byId(id).value));
const applyFilters = () => {
  keep.fill(1);
  const least = Number(byId("least").value || 0) * 10;
  const flags = [byId("recorded").checked, byId("unnamed").checked];
  if (chosen("group") >= 0 || chosen("radio") >= 0 || least > 0 || flags.includes(true)) {
    dropOthers(chosen("group"), chosen("radio"), least > 0 ? least : -1, ...flags);
  }
  for (const word of byId("text").value.toLowerCase().split(/\s+/)) {
    if (!word) continue;
    if (inKept.length > 0) inKept.set(keep);
    lookWord(word, keep);
  }
  let count = 0;
  let airtime = 0;
  for (let i = 0; i < total; ++i) {
    if (keep[i] === 0) continue;
    rowsInView[count++] = i;
    if (lengths[i] > 0) airtime += lengths[i];
  }
  shown = rowsInView.subarray(0, count);
  byId("count").textContent =
    `${countText(count)} of ${countText(total)} calls, ${spanText(airtime / 10)}`;
  grid.show(shown);
};
const clearFilters = () => {
  for (const id of ["text", "group", "radio", "least"]) byId(id).value = "";
  for (const id of ["recorded", "unnamed"]) byId(id).checked = false;
};
const showCall = (i) => {
  if (keep[i] === 0) {
    clearFilters();
    applyFilters();
  }
  byId("calls").scrollIntoView();
  grid.host.focus({preventScroll: true});
  grid.choose(shown.indexOf(i), false);
};

const fillSelect = (select, named, counts, all) => {
  select.append(element("option", {value: ""}, all));
  named.map((_, at) => at).filter((at) => counts[at] > 0)
    .sort((a, b) => counts[b] - counts[a]).slice(0, 2000)
    .forEach((at) => {
      const text = `${nameOf(named[at])} (${countText(counts[at])})`;
      select.append(element("option", {value: at}, text));
    });
};
const setUpCalls = () => {
  fillSelect(byId("group"), groups, groupCalls, "all");
  fillSelect(byId("radio"), radios, radioCalls, "all");
  for (const id of ["text", "group", "radio", "least", "recorded", "unnamed"]) {
    byId(id).addEventListener("input", applyFilters);
  }
  byId("clear").addEventListener("click", () => {
    clearFilters();
    applyFilters();
  });
  const name = document.title.replace(/[^0-9A-Za-z]+/g, "-");
  const save = (id, ending, type, made) => byId(id).addEventListener("click",
    () => download(`${name}.${ending}`, type, made(shown)));
  save("to-csv", "csv", "text/csv", csvOf);
  save("to-json", "json", "application/json", jsonOf);
  save("to-m3u", "m3u8", "audio/x-mpegurl", m3uOf);
  applyFilters();
};
