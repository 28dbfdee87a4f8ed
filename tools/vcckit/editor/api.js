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

export async function post(path, body) {
  const response = await fetch(path, { method: 'POST', cache: 'no-store', body: JSON.stringify(body),
    headers: { 'Content-Type': 'application/json' } });
  return (await answerOf(response)).json();
}

/** A path with those parameters that have a value. */
export function address(path, parameters = {}) {
  const query = new URLSearchParams();
  for (const [name, value] of Object.entries(parameters))
    if (value !== null && value !== undefined && value !== '') query.set(name, value);
  const text = query.toString();
  return text ? `${path}?${text}` : path;
}
