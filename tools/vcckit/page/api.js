// The server's requests. The page's own address holds the key, so every path is relative.

export class Refusal extends Error {
  constructor(status, answer) {
    super(answer?.error ?? `the server answered ${status}`);
    this.status = status;
    this.answer = answer ?? {};
  }
}

async function answerOf(response) {
  if (response.ok) return response;
  throw new Refusal(response.status, await response.json().catch(() => null));
}

export async function get(path, parameters = {}) {
  return answerOf(await fetch(address(path, parameters), { cache: 'no-store' }));
}
export const getJson = async (path, parameters) => (await get(path, parameters)).json();

/** What this page is called in what the server tells of changes. */
export const pageName = Math.random().toString(36).slice(2);

export async function post(path, body) {
  const response = await fetch(path, { method: 'POST', cache: 'no-store',
    body: JSON.stringify({ ...body, page: pageName }),
    headers: { 'Content-Type': 'application/json' } });
  const bytes = new Uint8ClampedArray(await (await answerOf(response)).arrayBuffer());
  const end = bytes.indexOf(10); // behind the first line are pixels
  const text = new TextDecoder().decode(end < 0 ? bytes : bytes.subarray(0, end));
  return Object.assign(JSON.parse(text), { pixels: bytes.slice(end + 1) });
}

/** A path with those parameters that have a value. */
export function address(path, parameters = {}) {
  const query = new URLSearchParams(Object.entries(parameters).filter(([, value]) => (value ?? '') !== ''));
  return query.size ? `${path}?${query}` : path;
}
