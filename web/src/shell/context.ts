/// How views reach the app.

import { createContext } from 'preact';
import { useContext } from 'preact/hooks';
import type { App } from './core/app';

export const AppContext = createContext<App>(null as unknown as App);
export const useApp = () => useContext(AppContext);
