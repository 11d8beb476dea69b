// How busy the receiver was, and how much was missed meanwhile, over all that was read.
const airtimeChart = {drawn: null, step: 0};

// Columns of at least five minutes, few enough for a screen.
const chartSteps = [300, 900, 1800, 3600, 6 * 3600, 86400, 7 * 86400];
const chartRows = () => {
  const days = raw.days.map((day) => day.start).filter((start) => start >= 0);
  const heardDays = new Set(days.map((start) => Math.floor(start / 86400)));
  for (const day of daysWithCalls) heardDays.add(day);
  if (heardDays.size === 0) return [];
  const order = [...heardDays].sort((a, b) => a - b);
  const from = order[0] * 86400;
  const to = (order.at(-1) + 1) * 86400;
  const step = chartSteps.find((one) => (to - from) / one <= 400) || chartSteps.at(-1);
  const count = Math.ceil((to - from) / step);
  const airtime = new Float64Array(count);
  const missed = new Float64Array(count);
  for (let i = 0; i < known; ++i) {
    if (!isFollowed(i)) continue;
    let at = starts[i];
    const end = at + Math.max(0, lengths[i]) / 10;
    while (at < end) {
      const column = Math.floor((at - from) / step);
      const until = Math.min(end, from + (column + 1) * step);
      if (column >= 0 && column < count) airtime[column] += until - at;
      at = until;
    }
  }
  for (let m = 0; m < missedAt.length; ++m) {
    const column = Math.floor((missedAt[m] - from) / step);
    const counts = column >= 0 && column < count && !heard.has(outcomeNames[missedWhy[m]]);
    if (counts) ++missed[column];
  }
  airtimeChart.step = step;
  return Array.from(airtime, (seconds, column) => {
    const at = from + column * step;
    const read = step > 86400 || heardDays.has(Math.floor(at / 86400));
    return [new Date(at * 1000), read ? Math.min(100, 100 * seconds / step) : null,
      read ? missed[column] : null];
  });
};

const chartColours = () => ({
  colors: [colour("--main"), colour("--miss")], axisLineColor: colour("--line"),
  gridLineColor: colour("--line"),
});
const recolourChart = () => {
  if (airtimeChart.drawn) airtimeChart.drawn.updateOptions(chartColours());
};

const drawChart = () => {
  const rows = chartRows();
  const host = byId("airtime-chart");
  if (rows.length === 0) {
    byId("airtime").hidden = true;
    return;
  }
  const busiest = rows.reduce((most, row) => (row[1] > most[1] ? row : most), rows[0]);
  const at = busiest[0].getTime() / 1000;
  byId("airtime-text").textContent = `Columns of ${spanText(airtimeChart.step)}; the busiest begins ` +
    `on ${dateText(at)} at ${clockText(at)}, with a call for ${Math.round(busiest[1])} % of it. ` +
    "Drag across the chart to look closer, double-click to see all of it; a click chooses the day " +
    "below.";
  const percent = (value) => `${Math.round(value)} %`;
  airtimeChart.drawn = new Dygraph(host, rows, {
    ...chartColours(), labels: ["Time", "airtime", "missed setups"], labelsUTC: true,
    stepPlot: true, fillGraph: true, fillAlpha: 0.25, strokeWidth: 1.5, legend: "always",
    labelsDiv: byId("airtime-legend"), axisLabelFontSize: 12,
    series: {"missed setups": {axis: "y2", fillGraph: false}},
    axes: {
      x: {valueFormatter: (ms) => `${dateText(ms / 1000)} ${clockText(ms / 1000).slice(0, 5)}`},
      y: {valueRange: [0, null], includeZero: true, axisLabelWidth: 46,
        axisLabelFormatter: percent, valueFormatter: percent},
      y2: {valueRange: [0, null], includeZero: true, axisLabelWidth: 40, drawGrid: false,
        independentTicks: true, valueFormatter: (value) => countText(value)},
    },
    clickCallback: (event, ms) => {
      const day = String(Math.floor(ms / 86400000));
      const select = byId("timeline-day");
      if (![...select.options].some((option) => option.value === day)) return;
      select.value = day;
      select.dispatchEvent(new Event("change"));
    },
  });
};
