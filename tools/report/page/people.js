// A page for each group and each radio: when, with whom, how much.
const gather = (wanted) => {
  const found = {calls: 0, airtime: 0, first: NaN, last: NaN, hours: new Int32Array(24), radios: new Map(),
    groups: new Map(), pairs: new Map()};
  const count = (map, key, by = 1) => map.set(key, (map.get(key) || 0) + by);
  for (let i = 0; i < total; ++i) {
    if (!wanted(i)) continue;
    ++found.calls;
    found.airtime += Math.max(0, lengths[i]);
    if (i < known) {
      if (Number.isNaN(found.first)) found.first = starts[i];
      found.last = starts[i];
      ++found.hours[Math.floor(secondOfDay(starts[i]) / 3600)];
    }
    if (groupOf[i] >= 0) count(found.groups, groupOf[i]);
    for (const r of new Set(talkers.subarray(talkerFrom[i], talkerFrom[i + 1]))) count(found.radios, r);
    for (let t = talkerFrom[i] + 1; t < talkerFrom[i + 1]; ++t) {
      if (talkers[t] !== talkers[t - 1]) {
        count(found.pairs, `${Math.min(talkers[t], talkers[t - 1])} ${Math.max(talkers[t], talkers[t - 1])}`);
      }
    }
  }
  return found;
};
const ordered = (map, most = 12) => [...map].sort((a, b) => b[1] - a[1]).slice(0, most);
const hourBars = (hours) => {
  const most = Math.max(1, ...hours);
  return tableOf(["Hour", "#Calls", ""], Array.from(hours, (n, hour) => [two(hour), n, barOf(n / most)])
    .filter((row) => row[1] > 0).map(([hour, n, bar]) => [hour, countText(n), bar]), "Calls of each hour");
};
const showPerson = (kind, at) => {
  const isGroup = kind === "group";
  const named = isGroup ? groups[at] : radios[at];
  const has = new Uint8Array(total);
  for (let i = 0; i < total; ++i) {
    has[i] = isGroup ? Number(groupOf[i] === at) : Number(talkers.subarray(talkerFrom[i], talkerFrom[i + 1]).includes(at));
  }
  const found = gather((i) => has[i] === 1);
  const into = byId("person");
  const title = element("h3", {tabindex: "-1"}, `${isGroup ? "Group" : "Radio"} ${nameOf(named)}`);
  if (named.fresh) title.append(element("span", {class: "new"}, "new"));
  const seen = Number.isNaN(found.first) ? "" :
    `, from ${dateText(found.first)} ${clockText(found.first)} to ${dateText(found.last)} ${clockText(found.last)}`;
  const filter = element("button", {type: "button", onclick: () => {
    clearFilters();
    byId(kind).value = String(at);
    applyFilters();
    byId("calls").scrollIntoView();
  }}, "Show its calls");
  const close = element("button", {type: "button", onclick: () => { into.hidden = true; }}, "Close");
  const partners = ordered(found.radios).filter(([r]) => isGroup || r !== at);
  const pairs = ordered(found.pairs).map(([key, n]) => [key.split(" ").map(Number), n])
    .filter(([pair]) => isGroup || pair.includes(at));
  into.replaceChildren(title,
    element("p", {}, `${countText(found.calls)} calls, ${spanText(found.airtime / 10)}${seen}`),
    element("p", {class: "tools"}, filter, close),
    element("div", {class: "columns"},
      element("div", {}, element("h3", {}, isGroup ? "Who spoke" : "In the same calls"),
        tableOf(["Radio", "#Calls"], partners.map(([r, n]) => [radioLink(r), countText(n)]))),
      element("div", {}, element("h3", {}, "Who answered whom"),
        tableOf(["Radios", "", "#Times"], pairs.map(([[a, b], n]) => [radioLink(a), radioLink(b), countText(n)]))),
      element("div", {}, element("h3", {}, isGroup ? "When" : "Groups and when"),
        isGroup ? "" : tableOf(["Group", "#Calls"], ordered(found.groups).map(([g, n]) => [groupLink(g), countText(n)])),
        hourBars(found.hours))));
  into.hidden = false;
  into.scrollIntoView();
  title.focus({preventScroll: true});
};
const setUpPeople = () => {
  const list = (host, title, named, counts, link) => {
    const order = named.map((_, at) => at).filter((at) => counts[at] > 0).sort((a, b) => counts[b] - counts[a]);
    byId(host).append(element("h3", {}, `${countText(order.length)} ${title}`),
      tableOf([title[0].toUpperCase() + title.slice(1), "#Calls"], order.slice(0, 40).map((at) => {
        const cell = element("span", {}, link(at));
        if (named[at].fresh) cell.append(element("span", {class: "new"}, "new"));
        return [cell, countText(counts[at])];
      })));
    if (order.length > 40) byId(host).append(element("p", {class: "quiet"}, "The 40 with the most calls; the others are found by the filters of the table."));
  };
  list("group-list", "groups", groups, groupCalls, groupLink);
  list("radio-list", "radios", radios, radioCalls, radioLink);
  const follow = () => {
    const match = /^#(group|radio)-(\d+)$/.exec(location.hash);
    if (!match) return;
    const at = (match[1] === "group" ? groups : radios).findIndex((one) => one.number === Number(match[2]));
    if (at >= 0) showPerson(match[1], at);
  };
  window.addEventListener("hashchange", follow);
  follow();
};
