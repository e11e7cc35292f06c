// A form for any command, made from the API description.

import { element, options, setText } from "./dom.js";

/// Parameters beyond this number are folded away.
const SHOWN = 12;

export class CommandForm {
  #elements;
  #schemas;
  #parameters = [];

  /// @param elements  {select, description, fields}
  constructor(elements) {
    this.#elements = elements;
    elements.select.onchange = () => this.#showCommand();
  }

  /// Reads the description, once, and offers its commands.
  async load(url) {
    if (this.#schemas) {
      return;
    }
    const response = await fetch(url);
    if (!response.ok) {
      throw new Error(`${url} is not there (HTTP status ${response.status})`);
    }
    const { paths, components } = await response.json();
    this.#schemas = components.schemas;
    const [path] = Object.values(paths);
    const requests = path.post.requestBody.content["application/json"].schema.oneOf;
    const names = requests.map(({ $ref }) => this.#resolve({ $ref }).properties.Request.properties.Command.const);
    this.#elements.select.replaceChildren(...options(names.sort()));
    this.#showCommand();
  }

  /// The chosen command and its parameters as they were filled in. Optional ones that were left
  /// empty are left out.
  request() {
    const params = {};
    for (const { name, schema, required, field } of this.#parameters) {
      if (field.value !== "" || required) {
        params[name] = schema.type === "integer" ? Number(field.value) : field.value;
      }
    }
    const hasParams = this.#parameters.length > 0;
    return { command: this.#elements.select.value, params: hasParams ? params : undefined };
  }

  #showCommand() {
    const request = this.#schemas[`${this.#elements.select.value}Request`];
    setText(this.#elements.description, request.description);
    const params = this.#resolve(request.properties.Request.properties.Params ?? {});
    const names = Object.keys(params.properties ?? {});
    const pair = makePair(names, params.oneOf);
    this.#parameters = names.map((name) => this.#parameter(name, params, pair[name]));
    const rows = this.#parameters.map(({ row }) => row);
    const folded = rows.slice(SHOWN);
    this.#elements.fields.replaceChildren(
      ...rows.slice(0, SHOWN),
      ...(folded.length > 0 ? [fold(`${folded.length} more parameters`, folded)] : []),
    );
  }

  #parameter(name, params, field) {
    const schema = this.#resolve(params.properties[name]);
    const required = (params.required ?? []).includes(name);
    field ??= makeField(name, schema, required);
    const hint = element("p", { id: `hint-${name}`, className: "quiet", textContent: schema.description ?? "" });
    field.setAttribute("aria-describedby", hint.id);
    return { name, schema, required, field, row: element("div", {}, element("label", {}, `${name} `, field), hint) };
  }

  /// A schema with what it refers to.
  #resolve(schema) {
    const { $ref, ...own } = schema;
    return $ref ? { ...this.#resolve(this.#schemas[$ref.split("/").at(-1)]), ...own } : own;
  }
}

function makeField(name, schema, required) {
  if (schema.enum) {
    return makeSelect(name, required ? schema.enum : ["", ...schema.enum]);
  }
  if (schema.type === "integer") {
    return element("input", { name, type: "number", required, min: schema.minimum ?? "", max: schema.maximum ?? "" });
  }
  return element("input", {
    name,
    type: schema.format === "password" ? "password" : "text",
    maxLength: schema.maxLength ?? 5000,
    autocomplete: "off",
  });
}

function makeSelect(name, words) {
  return element("select", { name }, ...options(words));
}

/// The fields of two parameters that go together, a control and its key: the choice of the first one
/// decides what the second one offers.
/// @param oneOf  the pairs, if the command has any
function makePair([first, second], oneOf) {
  if (!oneOf) {
    return {};
  }
  const keysOf = new Map(oneOf.map(({ properties }) => [properties[first].const, properties[second].enum]));
  const kinds = makeSelect(first, [...keysOf.keys()]);
  const keys = makeSelect(second, []);
  const follow = () => keys.replaceChildren(...options(keysOf.get(kinds.value)));
  kinds.onchange = follow;
  follow();
  return { [first]: kinds, [second]: keys };
}

function fold(title, contents) {
  return element("details", {}, element("summary", {}, title), ...contents);
}
