// 24 hours of one day, a lane for each group.
const lane = {height: 24, left: 190, top: 26, width: 1180, groups: [], day: NaN};
const daysWithCalls = [...new Set(starts.subarray(0, known).map((s) => Math.floor(s / 86400)))];

const firstAt = (second) => {
  let low = 0;
  let high = known;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (starts[middle] < second) low = middle + 1;
    else high = middle;
  }
  return low;
};
const missedAt = Float64Array.from(raw.missedAt);
const missedGroup = Int32Array.from(raw.missedGroup);
const missedWhy = Int8Array.from(raw.missedWhy);

const chooseLanes = () => {
  const begin = lane.day * 86400;
  const weight = new Map();
  lane.from = firstAt(begin);
  lane.to = firstAt(begin + 86400);
  for (let i = lane.from; i < lane.to; ++i) {
    const g = groupOf[i];
    if (g >= 0) weight.set(g, (weight.get(g) || 0) + Math.max(10, lengths[i]));
  }
  for (let m = 0; m < missedAt.length; ++m) {
    const inside = missedAt[m] >= begin && missedAt[m] < begin + 86400;
    if (inside && missedGroup[m] >= 0 && !weight.has(missedGroup[m])) weight.set(missedGroup[m], 1);
  }
  lane.groups = [...weight.keys()].sort((a, b) => weight.get(b) - weight.get(a))
    .slice(0, Number(byId("timeline-lanes").value));
};

const xOf = (second) =>
  lane.left + (second - lane.day * 86400) / 86400 * (lane.width - lane.left - 10);

const drawTimeline = () => {
  const canvas = byId("lanes");
  if (Number.isNaN(lane.day)) {
    canvas.hidden = true;
    return;
  }
  const room = canvas.parentElement.clientWidth;
  lane.width = Math.max(700, room);
  lane.left = room < 700 ? 110 : 190;
  const height = lane.top + lane.groups.length * lane.height + 6;
  const scale = window.devicePixelRatio || 1;
  canvas.style.width = `${lane.width}px`;
  canvas.style.height = `${height}px`;
  canvas.width = lane.width * scale;
  canvas.height = height * scale;
  const draw = canvas.getContext("2d");
  draw.scale(scale, scale);
  draw.font = "12px " + getComputedStyle(document.body).fontFamily;
  draw.textBaseline = "middle";
  draw.strokeStyle = colour("--line");
  draw.fillStyle = colour("--quiet");
  draw.textAlign = "center";
  for (let hour = 0; hour <= 24; ++hour) {
    const x = Math.round(xOf(lane.day * 86400 + hour * 3600)) + 0.5;
    draw.beginPath();
    draw.moveTo(x, lane.top - 6);
    draw.lineTo(x, height);
    draw.stroke();
    if (hour % 2 === 0 && hour < 24) draw.fillText(two(hour), x, 10);
  }
  draw.textAlign = "left";
  const place = new Map(lane.groups.map((g, at) => [g, at]));
  lane.groups.forEach((g, at) => {
    let name = groupName(g);
    while (name.length > 4 && draw.measureText(name).width > lane.left - 12) {
      name = name.slice(0, -2) + "\u2026";
    }
    draw.fillStyle = colour("--ink");
    draw.fillText(name, 2, lane.top + at * lane.height + lane.height / 2);
  });
  const bars = [colour("--count"), colour("--main"), colour("--miss")];
  const bar = (kind, g, from, seconds) => {
    const at = place.get(g);
    if (at === undefined) return;
    draw.fillStyle = bars[kind];
    const x = xOf(from);
    const y = lane.top + at * lane.height;
    if (kind === 2) draw.fillRect(x, y + lane.height - 7, 1.5, 5);
    else draw.fillRect(x, y + 3, Math.max(1.5, xOf(from + seconds) - x), lane.height - 11);
  };
  for (let m = 0; m < missedAt.length; ++m) {
    if (Math.floor(missedAt[m] / 86400) === lane.day && !heard.has(outcomeNames[missedWhy[m]])) {
      bar(2, missedGroup[m], missedAt[m], 0);
    }
  }
  for (let i = lane.from; i < lane.to; ++i) {
    bar(isFollowed(i) ? 1 : 0, groupOf[i], starts[i], Math.max(0, lengths[i]) / 10);
  }
  canvas.setAttribute("aria-label", `${countText(lane.to - lane.from)} calls of ` +
    `${dateText(lane.day * 86400)} in ${lane.groups.length} lanes, one for each group. ` +
    "The table of calls has the same.");
};

const callAtPoint = (event) => {
  const g = lane.groups[Math.floor((event.offsetY - lane.top) / lane.height)];
  if (g === undefined || event.offsetX < lane.left) return -1;
  const reach = 86400 / (lane.width - lane.left) * 4;
  const part = (event.offsetX - lane.left) / (lane.width - lane.left - 10);
  const second = (lane.day + part) * 86400;
  let best = -1;
  let distance = reach;
  for (let i = firstAt(second - 7200); i < lane.to && starts[i] <= second + reach; ++i) {
    if (groupOf[i] !== g) continue;
    const end = starts[i] + Math.max(0, lengths[i]) / 10;
    const off = second < starts[i] ? starts[i] - second : Math.max(0, second - end);
    if (off <= distance) {
      distance = off;
      best = i;
    }
  }
  return best;
};

const setUpTimeline = () => {
  const days = byId("timeline-day");
  daysWithCalls.forEach((day) =>
    days.append(element("option", {value: day}, dateText(day * 86400))));
  const change = () => {
    lane.day = days.value === "" ? NaN : Number(days.value);
    if (!Number.isNaN(lane.day)) chooseLanes();
    drawTimeline();
  };
  days.addEventListener("change", change);
  byId("timeline-lanes").addEventListener("change", change);
  if (daysWithCalls.length === 0) byId("lane-note").textContent = "No call has a time.";
  byId("lanes").addEventListener("click", (event) => {
    const call = callAtPoint(event);
    if (call >= 0) showCall(call);
  });
  byId("lanes").addEventListener("mousemove", (event) => {
    const call = callAtPoint(event);
    event.target.title = call < 0 ? ""
      : [clockText(starts[call]), groupName(groupOf[call]), lengthText(lengths[call])].join(" ");
  });
  change();
  const most = Math.max(1, ...airtimeByHour);
  const rows = Array.from(airtimeByHour, (tenths, hour) =>
    [`${two(hour)}:00`, countText(callsByHour[hour]), spanText(tenths / 10), barOf(tenths / most)]);
  byId("hours").append(
    tableOf(["Hour", "#Calls", "#Airtime", "Share"], rows, "Airtime of each hour"));
};
